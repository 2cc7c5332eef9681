#pragma once

#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/devhealth/parts/pci/pci_part.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// The parts of a node that belong into the PCI table although a list of
/// devices may lack them: network adapters of its chassis (if those have none,
/// of its systems' network interfaces), processors that are no CPU, and storage
/// controllers that say what they are. Includes absent ones. Tells the tally
/// what cannot be read.
std::vector<PciPart> loneParts(const redfish::Graph& graph,
                               const redfish::Node& node, ReadTally& tally);

}  // namespace devhealth
