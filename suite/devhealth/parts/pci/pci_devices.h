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
/// (`Oem.*.Links.Devices`). Each is there once, however often it is listed.
/// Devices that sit in another node's chassis, retimers, simulated ones and the
/// batteries of such a list are left out. What cannot be read is told to the
/// tally.
std::vector<PciPart> pciDevices(const redfish::Graph& graph,
                                const redfish::Node& node, ReadTally& tally);

}  // namespace devhealth
