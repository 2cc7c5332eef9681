#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/report.h"

namespace devhealth {

/// The node's system board: one record. What the system does not say is taken
/// from its first chassis.
Mapped<report::System> mapSystem(const redfish::Graph& graph,
                                 const redfish::Node& node);

}  // namespace devhealth
