#pragma once

#include <cstddef>
#include <vector>

#include "suite/devhealth/parts/pci/pci_part.h"
#include "suite/devhealth/parts/pci/pci_slots.h"

namespace devhealth {

/// For each lone part the devices that it is, as indexes; none where it is a
/// part of its own. Five steps, each over all parts before the next: the links
/// of the part and of its controllers; the serial number; the label of its slot
/// or its identifier; its name, model or identifier inside the device's name or
/// model, or the reverse; the one adapter and the one device of a maker that
/// are left. The last three take only devices that are no other part, and
/// never two that state different serial numbers, except where name or model
/// are the same and unique.
std::vector<std::vector<std::size_t>> matchDevices(
    const std::vector<PciPart>& devices, const std::vector<PciPart>& loneParts,
    const PciSlots& slots);

}  // namespace devhealth
