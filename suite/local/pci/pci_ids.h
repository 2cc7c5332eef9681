#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/local/facts/machine_names.h"

namespace local {

/// The longest list of names that is read, in bytes; systems have 1.5 MB.
inline constexpr std::size_t kLongestPciIds = 16U * 1024 * 1024;

/// How many hexadecimal digits an id in that list has.
inline constexpr std::size_t kPciIdDigits = 4;

/// The id at an offset of one of its lines; nullopt if none stands there.
std::optional<std::uint16_t> pciIdAt(std::string_view line, std::size_t offset);

/// The four numbers that identify a PCI function.
struct PciIdentity {
  std::uint16_t vendor = 0;
  std::uint16_t device = 0;
  std::uint16_t subsystemVendor = 0;
  std::uint16_t subsystem = 0;
};

/// What the numbers stand for; an empty text: not listed.
struct PciNames {
  std::string manufacturer;
  std::string model;
};

/// The list of PCI ids that systems carry as "pci.ids": vendors, below each
/// its devices, below each of those its subsystems.
class PciIds {
 public:
  /// Takes the bytes of the file. Lines that are no entries are skipped.
  explicit PciIds(std::string text);

  /// Names of a function: those of its chip, or those of the subsystem (the
  /// card as it was bought) if the list has the subsystem's name below one
  /// maker of chips only and it is no name of the machine. Boards give their
  /// own name to every function on them.
  PciNames names(const PciIdentity& identity,
                 const MachineNames& machine = {}) const;

 private:
  /// A vendor's line.
  struct Vendor {
    std::uint16_t id = 0;
    std::size_t offset = 0;
  };

  /// The lines from a vendor's on; empty when it is not listed.
  std::string_view section(std::uint16_t vendor) const;
  std::string_view vendorName(std::uint16_t vendor) const;
  /// Whether all subsystems of a name stand below devices of one vendor.
  bool standsUnder(std::uint16_t vendor, std::string_view subsystemName) const;

  std::string text_;
  std::vector<Vendor> vendors_;  ///< In the order of the list.
};

}  // namespace local
