#include "suite/local/recording/pci_names.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>

namespace local {
namespace {

// A vendor, or below it a device, or below that a subsystem.
struct Entry {
  std::string_view line;
  std::size_t level = 0;  // 0 for a vendor.
  PciIdentity identity;   // With those above it.
  std::string_view name;
};

std::uint16_t idAt(std::string_view line, std::size_t offset) {
  return pciIdAt(line, offset).value_or(0);
}

// Calls `take` with each entry of a list, in its order.
void eachEntry(std::string_view list,
               const std::function<void(const Entry&)>& take) {
  Entry entry;
  while (!list.empty()) {
    entry.line = list.substr(0, std::min(list.find('\n'), list.size() - 1) + 1);
    list.remove_prefix(entry.line.size());
    if (entry.line.substr(0, 2) == "C ") {
      return;  // The classes of devices follow.
    }
    entry.level = std::min(entry.line.find_first_not_of('\t'), std::size_t{3});
    const std::size_t ids =
        entry.level == 2 ? 2 * kPciIdDigits + 1 : kPciIdDigits;
    if (entry.level > 2 || entry.line.size() < entry.level + ids + 2 ||
        entry.line.front() == '#') {
      continue;
    }
    entry.name = entry.line.substr(entry.level + ids);
    if (entry.level == 0) {
      entry.identity.vendor = idAt(entry.line, 0);
    } else if (entry.level == 1) {
      entry.identity.device = idAt(entry.line, 1);
    } else {
      entry.identity.subsystemVendor = idAt(entry.line, 2);
      entry.identity.subsystem = idAt(entry.line, 2 + kPciIdDigits + 1);
    }
    take(entry);
  }
}

bool same(const PciIdentity& a, const PciIdentity& b) {
  return a.vendor == b.vendor && a.device == b.device &&
         a.subsystemVendor == b.subsystemVendor && a.subsystem == b.subsystem;
}

// The names of the machine's own subsystems.
std::set<std::string_view> subsystemNames(
    std::string_view list, const std::vector<PciIdentity>& functions) {
  std::set<std::string_view> names;
  eachEntry(list, [&](const Entry& entry) {
    if (entry.level == 2 && std::any_of(functions.begin(), functions.end(),
                                        [&](const PciIdentity& function) {
                                          return same(function, entry.identity);
                                        })) {
      names.insert(entry.name);
    }
  });
  return names;
}

}  // namespace

std::string namesOf(std::string_view list,
                    const std::vector<PciIdentity>& functions) {
  std::set<std::uint16_t> vendors;
  for (const PciIdentity& function : functions) {
    vendors.insert({function.vendor, function.subsystemVendor});
  }
  const std::set<std::string_view> names = subsystemNames(list, functions);
  std::string kept;
  std::string_view vendorLine;  // Of the entry at hand, until they are kept.
  std::string_view deviceLine;
  eachEntry(list, [&](const Entry& entry) {
    if (vendors.count(entry.identity.vendor) != 0) {
      kept += entry.line;
    } else if (entry.level == 0) {
      vendorLine = entry.line;
    } else if (entry.level == 1) {
      deviceLine = entry.line;
    } else if (names.count(entry.name) != 0) {
      kept.append(vendorLine).append(deviceLine).append(entry.line);
      vendorLine = deviceLine = {};
    }
  });
  return kept;
}

}  // namespace local
