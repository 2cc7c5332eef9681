#pragma once

#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// The node's PCIe devices, from the first of these that names any: the
/// system, the collections of its chassis, the links of its chassis. Devices
/// that sit in another node's chassis, absent ones, retimers and simulated
/// ones are left out; what cannot be read is told to the tally.
std::vector<Part> pciDevices(const redfish::Graph& graph,
                             const redfish::Node& node, ReadTally& tally);

/// The network adapters of the node's chassis, without absent ones.
std::vector<Part> networkAdapters(const redfish::Graph& graph,
                                  const redfish::Node& node, ReadTally& tally);

}  // namespace devhealth
