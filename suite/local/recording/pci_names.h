#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "suite/local/pci/pci_ids.h"

namespace local {

/// Of a list of PCI names ("pci.ids") the part that names the functions of a
/// machine: the vendors of chips and subsystems, with all that stands below
/// them. Of other vendors the subsystems are kept that have the name of one of
/// the machine's own: a name below several makers of chips is that of a board.
std::string namesOf(std::string_view list,
                    const std::vector<PciIdentity>& functions);

}  // namespace local
