#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/report.h"

namespace devhealth {

/// The supplies that power the node, those of a shared enclosure included.
Mapped<report::PowerSupply> mapPowers(const redfish::Graph& graph,
                                      const redfish::Node& node);

}  // namespace devhealth
