#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/report.h"

namespace devhealth {

/// The node's memory modules, persistent ones included, without empty slots
/// and caches.
Mapped<report::MemoryModule> mapDimms(const redfish::Graph& graph,
                                      const redfish::Node& node);

}  // namespace devhealth
