#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/smbios/smbios.h"

namespace local {

// The parts that the structure table lists, each in table order. Sockets and
// bays that are empty are left out.

/// Populated sockets of central processors (type 4), or, where there is none,
/// of processors of the type "Other". A version that is a name of the machine
/// (guests have one there) is left empty.
std::vector<ProcessorFacts> processorFacts(const SmbiosTables& tables);

/// Memory devices that hold a module (type 17), but not those of an array
/// (type 16) with another use than system memory, such as firmware flash.
std::vector<MemoryFacts> memoryFacts(const SmbiosTables& tables);

/// How many places for memory modules there are, empty ones included: as many
/// as the arrays of system memory state (type 16), or as memory devices are
/// listed (type 17) where those are more. nullopt if the table tells of none.
std::optional<std::size_t> memoryPlaces(const SmbiosTables& tables);

/// Power supplies that are present (type 39). A structure that firmware left
/// as a template, without name, location, manufacturer, part number and
/// capacity, is not a supply.
std::vector<SupplyFacts> supplyFacts(const SmbiosTables& tables);

/// Slots (type 9) that state a designation and a PCI address: that of the
/// card, or that of the port above it. Of several slots that state the same
/// address only the one in use is returned, and none if several are or no one
/// is.
std::vector<SlotFacts> slotFacts(const SmbiosTables& tables);

/// On-board devices (type 41), with or without a designation; the address is
/// the device's own.
std::vector<SlotFacts> onboardFacts(const SmbiosTables& tables);

}  // namespace local
