#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "syshealth/inventory/components.h"

namespace devhealth {

/// The node's memory modules, persistent ones included, without empty slots
/// and caches.
Mapped<Tarvex::DeviceHealth::DIMM> mapDimms(const redfish::Graph& graph,
                                            const redfish::Node& node);

}  // namespace devhealth
