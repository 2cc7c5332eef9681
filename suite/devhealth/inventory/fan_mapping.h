#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/report.h"

namespace devhealth {

/// The fans that cool the node, those of a shared enclosure included.
Mapped<report::Fan> mapFans(const redfish::Graph& graph,
                            const redfish::Node& node);

}  // namespace devhealth
