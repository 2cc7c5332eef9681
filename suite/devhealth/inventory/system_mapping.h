#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/report.h"

namespace devhealth {

/// The node's system board: one record. Values that the system lacks are those
/// of its first chassis.
Mapped<report::System> mapSystem(const redfish::Graph& graph,
                                 const redfish::Node& node);

}  // namespace devhealth
