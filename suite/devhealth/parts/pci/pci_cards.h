#pragma once

#include <string>
#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/devhealth/parts/pci/pci_part.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// One row of the PCI table.
struct PciCard {
  PciPart part;               ///< A device, else a lone part.
  std::vector<PciPart> also;  ///< The lone parts that are this device.
  PciFields fields;           ///< Its own; empty ones filled by `also`.
  std::string name;           ///< What the first column shows.
  std::string slot;           ///< The label of its place; may be empty.
};

/// The node's devices and the lone parts that are none of them, each once, in
/// the natural order of their names. Leaves out absent ones. Tells the tally
/// what cannot be read.
std::vector<PciCard> pciCards(const redfish::Graph& graph,
                              const redfish::Node& node, ReadTally& tally);

}  // namespace devhealth
