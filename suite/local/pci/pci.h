#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/facts/root.h"
#include "suite/local/pci/pci_ids.h"

namespace local {

/// What else is known of the places and names of PCI functions.
struct PciContext {
  std::vector<SlotFacts> slots;    ///< Of SMBIOS type 9.
  std::vector<SlotFacts> onboard;  ///< Of SMBIOS type 41.
  std::string idsFile;             ///< Names; empty: where systems keep them.
  /// For the vital product data of all functions together.
  std::chrono::milliseconds vpdLimit{500};
};

/// The adapters among the PCI functions under /sys/bus/pci/devices, by
/// address: function 0 of what stores, connects, displays, computes or
/// speeds up; bridges, buses and virtual functions are left out.
///
/// The kernel's folders are read directly, and not through libpciaccess,
/// because that library reads "/sys" and one names file alone (a recorded
/// machine has another root), and gives no vital product data.
std::vector<PciFacts> pciFacts(const Root& root, const PciContext& context);

/// The designation of the slot or on-board place that names a function itself,
/// else of the slot that names the nearest port above it; `above` holds these,
/// the nearest first.
std::string designationOf(const PciAddress& address,
                          const std::vector<PciAddress>& above,
                          const PciContext& context);

/// Sorts by segment, bus, device and function.
void sortByAddress(std::vector<PciFacts>& facts);

/// The list of names that a setting asks for, a file of this system.
PciIds configuredIds(const std::string& file);

/// Reads an address as the kernel writes it: "0000:3b:00.0".
std::optional<PciAddress> parsePciAddress(std::string_view text);

/// Whether a class code of 24 bits is that of an adapter.
bool isAdapterClass(std::uint32_t classCode);

}  // namespace local
