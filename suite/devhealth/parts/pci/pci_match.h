#pragma once

#include <cstddef>
#include <vector>

#include "suite/devhealth/parts/pci/pci_part.h"
#include "suite/devhealth/parts/pci/pci_slots.h"

namespace devhealth {

/// For each lone part the indexes of the devices that are the same part; none
/// if it is a part of its own. Parts are matched in five steps, each for all
/// parts before the next:
///
/// 1. the links of the part and of its controllers;
/// 2. the serial number;
/// 3. the label of its slot, or its identifier;
/// 4. its name, model or identifier inside the device's name or model, or the
///    reverse;
/// 5. the only adapter and the only device of a maker that are left.
///
/// Steps 3 to 5 take only devices that are no other part, and none with another
/// serial number, unless name or model are the same and unique.
std::vector<std::vector<std::size_t>> matchDevices(
    const std::vector<PciPart>& devices, const std::vector<PciPart>& loneParts,
    const PciSlots& slots);

}  // namespace devhealth
