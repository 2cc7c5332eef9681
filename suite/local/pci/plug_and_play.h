#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/pci/adapter.h"

namespace local {

/// Where the registry of devices says that a PCI function sits.
struct PnpPlace {
  std::optional<std::uint32_t> bus;  ///< With the segment above the low byte.
  /// The device in the upper half, the function in the lower.
  std::optional<std::uint32_t> address;
  /// For people, in the user's language: "PCI bus 3, device 0, function 0".
  std::string location;
};

/// What the registry of devices of Windows says of a PCI function.
struct PnpFunction {
  PnpPlace place;
  std::vector<PnpPlace> above;  ///< The ports above it, the nearest first.
  /// Its hardware and compatible IDs: "PCI\VEN_8086&DEV_1533&CC_020000".
  std::vector<std::string> ids;
  std::string manufacturer;
  std::string description;
  bool driverBound = false;
};

/// The place as numbers: those of the registry, else the three that stand in
/// the location, whatever the language.
std::optional<PciAddress> addressOf(const PnpPlace& place);

/// The adapters among the functions, as `chooseAdapters` chooses them by the
/// class in their IDs; functions without a place are left out. Names are those
/// of the configured list, else the registry's.
std::vector<PciFacts> pciFacts(const std::vector<PnpFunction>& listed,
                               const PciContext& context);

}  // namespace local
