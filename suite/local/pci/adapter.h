#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/facts/machine_names.h"
#include "suite/local/pci/pci_ids.h"

namespace local {

/// What else is known of the places and names of PCI functions.
struct PciContext {
  std::vector<SlotFacts> slots;    ///< Of SMBIOS type 9.
  std::vector<SlotFacts> onboard;  ///< Of SMBIOS type 41.
  MachineNames machine;
  std::string idsFile;  ///< Names; empty: where systems keep them.
  /// For the vital product data of all functions together.
  std::chrono::milliseconds vpdLimit{500};
};

/// A physical PCI function, as the system lists it.
struct PciFunction {
  PciAddress address;
  std::vector<PciAddress> above;  ///< The ports above it, the nearest first.
  std::uint32_t classCode = 0;    ///< Base class, subclass and interface.
  PciIdentity identity;
  bool driverBound = false;
};

/// Reads an address as the kernel writes it: "0000:3b:00.0".
std::optional<PciAddress> parsePciAddress(std::string_view text);

/// Whether a function is that of an adapter by its class code of 24 bits:
/// one that stores, connects, displays, computes or speeds up, CXL memory, or
/// one without a class that a driver serves. Bridges, USB, system management
/// buses and the machine's own management engine are none.
bool isAdapter(std::uint32_t classCode, bool driverBound);

/// The functions that stand for the adapters of a machine, as indexes in the
/// order of their addresses: of each device the lowest adapter function of
/// each base class. A function of multimedia is left out beside a display of
/// the same maker, whose sound output it is. Class code, address, vendor and
/// driver of the functions are looked at.
std::vector<std::size_t> chooseAdapters(
    const std::vector<PciFunction>& functions);

/// What is known of an adapter but its vital product data.
PciFacts factsOf(const PciFunction& function, const PciIds& ids,
                 const PciContext& context);

/// The designation of the slot or on-board place that names a function or its
/// device; for a device that is not on the board else that of the slot that
/// names the nearest port above it.
std::string designationOf(const PciFunction& function,
                          const PciContext& context);

/// The list of names that a setting asks for, a file of this system.
PciIds configuredIds(const std::string& file);

}  // namespace local
