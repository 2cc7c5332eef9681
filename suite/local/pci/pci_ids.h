#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace local {

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

  /// Names of a function. Those of the subsystem, its vendor and itself, go
  /// before those of the chip, because they name the card as it was bought.
  PciNames names(const PciIdentity& identity) const;

 private:
  /// The lines below a vendor; empty when it is not listed.
  std::string_view section(std::uint16_t vendor) const;
  std::string_view vendorName(std::uint16_t vendor) const;

  std::string text_;
  /// Vendor and offset of its line, by vendor.
  std::vector<std::pair<std::uint16_t, std::size_t>> vendors_;
};

}  // namespace local
