#pragma once

#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/smbios/smbios.h"

namespace local {

// The parts that the structure table lists, each in table order. Sockets and
// bays that are empty are left out.

/// Populated sockets of central processors (type 4).
std::vector<ProcessorFacts> processorFacts(const SmbiosTables& tables);

/// Memory devices that hold a module (type 17).
std::vector<MemoryFacts> memoryFacts(const SmbiosTables& tables);

/// Power supplies that are present (type 39).
std::vector<SupplyFacts> supplyFacts(const SmbiosTables& tables);

/// Slots (type 9) that state a designation and a PCI address: that of the
/// card, or that of the port above it.
std::vector<SlotFacts> slotFacts(const SmbiosTables& tables);

/// On-board devices (type 41), likewise; the address is the device's own.
std::vector<SlotFacts> onboardFacts(const SmbiosTables& tables);

}  // namespace local
