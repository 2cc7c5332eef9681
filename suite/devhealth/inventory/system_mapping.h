#pragma once

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "syshealth/inventory/components.h"

namespace devhealth {

/// The node's system board: one record. What the system does not say is taken
/// from its first chassis.
Mapped<Tarvex::DeviceHealth::SystemBoard> mapSystem(const redfish::Graph& graph,
                                                    const redfish::Node& node);

}  // namespace devhealth
