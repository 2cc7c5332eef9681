#pragma once

#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/devhealth/parts/pci/pci_part.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// The node's PCIe devices, absent ones included, from the first of these that
/// names any: its systems, the collections of its chassis, the links of its
/// chassis, the lists that makers put beside an empty or unreadable collection
/// (`Oem.*.Links.Devices`). Each stands once, however often it is listed.
/// Leaves out devices in another node's chassis, retimers, simulated devices,
/// and batteries in a maker's list. Tells the tally what cannot be read.
std::vector<PciPart> pciDevices(const redfish::Graph& graph,
                                const redfish::Node& node, ReadTally& tally);

}  // namespace devhealth
