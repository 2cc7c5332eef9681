#include "suite/local/pci/pci_ids.h"

#include <algorithm>
#include <iterator>

#include "suite/base/numbers.h"
#include "suite/base/time_limit.h"

namespace local {
namespace {

// Behind two tabs, the subsystem's vendor, a blank and the subsystem.
constexpr std::size_t kSubsystemNameAt = 2 + kPciIdDigits + 1 + kPciIdDigits;
// Behind the last vendor the file lists device classes, in lines that start
// with this.
constexpr std::string_view kClassMark = "C ";

// Cuts the first line off a text.
std::string_view takeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return line;
}

// The name at the end of a line whose ids end at an offset.
std::string_view nameBehind(std::string_view line, std::size_t offset) {
  const std::size_t begin = line.find_first_not_of(' ', offset);
  if (begin == std::string_view::npos || begin == offset) {
    return {};
  }
  return line.substr(begin);
}

}  // namespace

std::optional<std::uint16_t> pciIdAt(std::string_view line,
                                     std::size_t offset) {
  if (line.size() < offset + kPciIdDigits) {
    return std::nullopt;
  }
  return base::parseNumber<std::uint16_t>(line.substr(offset, kPciIdDigits),
                                          16);
}

PciIds::PciIds(std::string text) : text_(std::move(text)) {
  std::string_view rest = text_;
  while (!rest.empty()) {
    const std::size_t offset = text_.size() - rest.size();
    const std::string_view line = takeLine(rest);
    if (line.substr(0, kClassMark.size()) == kClassMark) {
      break;
    }
    if (line.empty() || line[0] == '\t' || line[0] == '#') {
      continue;
    }
    if (const auto vendor = pciIdAt(line, 0)) {
      vendors_.push_back({*vendor, offset});
    }
  }
}

std::string_view PciIds::section(std::uint16_t vendor) const {
  const auto found =
      std::find_if(vendors_.begin(), vendors_.end(),
                   [&](const Vendor& listed) { return listed.id == vendor; });
  if (found == vendors_.end()) {
    return {};
  }
  const std::string_view text = text_;
  return text.substr(found->offset);
}

std::string_view PciIds::vendorName(std::uint16_t vendor) const {
  std::string_view rest = section(vendor);
  return nameBehind(takeLine(rest), kPciIdDigits);
}

bool PciIds::standsUnder(std::uint16_t vendor,
                         std::string_view subsystemName) const {
  const std::string_view text = text_;
  // A line is looked at once, however often it has the name.
  for (std::size_t at = text.find(subsystemName); at != std::string_view::npos;
       at = text.find(subsystemName, at)) {
    const std::size_t begin = text.rfind('\n', at) + 1;
    std::string_view rest = text.substr(begin);
    const std::string_view line = takeLine(rest);
    base::heedTime();
    at = begin + line.size();
    if (line.substr(0, 2) != "\t\t" ||
        nameBehind(line, kSubsystemNameAt) != subsystemName) {
      continue;
    }
    const auto next = std::upper_bound(
        vendors_.begin(), vendors_.end(), begin,
        [](std::size_t offset, const Vendor& v) { return offset < v.offset; });
    if (next == vendors_.begin() || std::prev(next)->id != vendor) {
      return false;
    }
  }
  return true;
}

PciNames PciIds::names(const PciIdentity& identity,
                       const MachineNames& machine) const {
  PciNames found;
  std::string_view rest = section(identity.vendor);
  found.manufacturer = nameBehind(takeLine(rest), kPciIdDigits);
  bool inDevice = false;
  while (!rest.empty()) {
    const std::string_view line = takeLine(rest);
    base::heedTime();
    if (line.substr(0, kClassMark.size()) == kClassMark) {
      break;
    }
    if (line.empty() || line[0] != '\t') {
      if (!line.empty() && line[0] != '#' && pciIdAt(line, 0)) {
        break;  // The next vendor.
      }
      continue;
    }
    const bool subsystem = line.substr(0, 2) == "\t\t";
    if (!subsystem) {
      if (inDevice) {
        break;
      }
      inDevice = pciIdAt(line, 1) == identity.device;
      if (inDevice) {
        found.model = nameBehind(line, 1 + kPciIdDigits);
      }
    } else if (inDevice && pciIdAt(line, 2) == identity.subsystemVendor &&
               pciIdAt(line, 7) == identity.subsystem) {
      const std::string_view name = nameBehind(line, kSubsystemNameAt);
      if (name.empty() || machine.contain(name) ||
          !standsUnder(identity.vendor, name)) {
        break;
      }
      const std::string_view maker = vendorName(identity.subsystemVendor);
      if (!maker.empty()) {
        found.manufacturer = maker;
      }
      found.model = name;
      break;
    }
  }
  return found;
}

}  // namespace local
