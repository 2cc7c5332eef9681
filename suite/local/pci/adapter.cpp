#include "suite/local/pci/adapter.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "suite/base/numbers.h"
#include "suite/base/time_limit.h"
#include "suite/local/facts/root.h"

namespace local {
namespace {

// Base classes and classes of the PCI Code and ID Assignment Specification.
constexpr std::uint32_t kNoBaseClass = 0x00;
constexpr std::uint32_t kDisplay = 0x03;
constexpr std::uint32_t kMultimedia = 0x04;
constexpr std::uint32_t kUnassigned = 0xFF;
constexpr std::uint32_t kCxlMemory = 0x0502;
constexpr std::uint32_t kManagementEngine = 0x0780;
constexpr std::uint32_t kUsb = 0x0C03;
constexpr std::uint32_t kSmBus = 0x0C05;

std::uint32_t baseClass(const PciFunction& function) {
  return function.classCode >> 16U;
}

PciAddress deviceOf(PciAddress address) {
  address.function = 0;
  return address;
}

// A device and the maker of one of its functions: the processor's own sound
// and its display are functions of one device by two makers.
using Maker = std::pair<PciAddress, std::uint16_t>;

Maker makerOf(const PciFunction& function) {
  return {deviceOf(function.address), function.identity.vendor};
}

std::set<Maker> displaysOf(const std::vector<PciFunction>& functions) {
  std::set<Maker> displays;
  for (const PciFunction& function : functions) {
    if (baseClass(function) == kDisplay) {
      displays.insert(makerOf(function));
    }
  }
  return displays;
}

std::string designationAt(const std::vector<SlotFacts>& places,
                          const PciAddress& address) {
  const auto place =
      std::find_if(places.begin(), places.end(), [&](const SlotFacts& slot) {
        base::heedTime();
        return slot.address == address;
      });
  return place == places.end() ? std::string() : place->designation;
}

}  // namespace

std::optional<PciAddress> parsePciAddress(std::string_view text) {
  // Segments have four digits or more: "0000:3b:00.0", "10000:01:00.0".
  const std::size_t tail = std::string_view(":3b:00.0").size();
  if (text.size() < tail + 4) {
    return std::nullopt;
  }
  const std::size_t colon = text.size() - tail;
  if (text[colon] != ':' || text[colon + 3] != ':' || text[colon + 6] != '.') {
    return std::nullopt;
  }
  const auto segment = base::hexadecimal(text.substr(0, colon));
  const auto bus = base::hexadecimal(text.substr(colon + 1, 2));
  const auto device = base::hexadecimal(text.substr(colon + 4, 2));
  const auto function = base::hexadecimal(text.substr(colon + 7, 1));
  if (!segment || !bus || !device || !function || *device > 31 ||
      *function > 7) {
    return std::nullopt;
  }
  return PciAddress{*segment, static_cast<std::uint8_t>(*bus),
                    static_cast<std::uint8_t>(*device),
                    static_cast<std::uint8_t>(*function)};
}

bool isAdapter(std::uint32_t classCode, bool driverBound) {
  switch (classCode >> 8U) {
    case kCxlMemory:
      return true;
    case kManagementEngine:
    case kUsb:
    case kSmBus:
      return false;
    default:
      break;
  }
  switch (classCode >> 16U) {
    case 0x01:  // Mass storage.
    case 0x02:  // Network.
    case kDisplay:
    case kMultimedia:
    case 0x07:  // Communication.
    case 0x0B:  // Processor.
    case 0x0C:  // Serial bus.
    case 0x0D:  // Wireless.
    case 0x10:  // Encryption.
    case 0x12:  // Processing accelerator.
      return true;
    case kNoBaseClass:
    case kUnassigned:
      return driverBound;
    default:
      return false;
  }
}

std::vector<std::size_t> chooseAdapters(
    const std::vector<PciFunction>& functions) {
  const auto displays = displaysOf(functions);
  // By device and base class.
  std::map<std::pair<PciAddress, std::uint32_t>, std::size_t> lowest;
  for (std::size_t i = 0; i < functions.size(); ++i) {
    const PciFunction& function = functions[i];
    if (!isAdapter(function.classCode, function.driverBound) ||
        (baseClass(function) == kMultimedia &&
         displays.count(makerOf(function)) != 0)) {
      continue;
    }
    const auto [best, isNew] = lowest.try_emplace(
        {deviceOf(function.address), baseClass(function)}, i);
    if (!isNew && function.address < functions[best->second].address) {
      best->second = i;
    }
  }
  std::vector<std::size_t> chosen;
  chosen.reserve(lowest.size());
  for (const auto& entry : lowest) {
    chosen.push_back(entry.second);
  }
  std::sort(chosen.begin(), chosen.end(), [&](std::size_t a, std::size_t b) {
    return functions[a].address < functions[b].address;
  });
  return chosen;
}

PciFacts factsOf(const PciFunction& function, const PciIds& ids,
                 const PciContext& context) {
  PciNames names = ids.names(function.identity, context.machine);
  PciFacts facts;
  facts.address = function.address;
  facts.vendorId = function.identity.vendor;
  facts.deviceId = function.identity.device;
  facts.manufacturer = std::move(names.manufacturer);
  facts.model = std::move(names.model);
  facts.slot = designationOf(function, context);
  facts.driverBound = function.driverBound;
  return facts;
}

std::string designationOf(const PciFunction& function,
                          const PciContext& context) {
  const PciAddress device = deviceOf(function.address);
  std::string designation = designationAt(context.slots, function.address);
  if (designation.empty()) {
    designation = designationAt(context.slots, device);
  }
  if (designation.empty()) {
    designation = designationAt(context.onboard, function.address);
  }
  const bool onBoard =
      std::any_of(context.onboard.begin(), context.onboard.end(),
                  [&](const SlotFacts& place) {
                    return deviceOf(place.address) == device;
                  });
  if (onBoard) {
    return designation;
  }
  for (const PciAddress& port : function.above) {
    if (!designation.empty()) {
      break;
    }
    designation = designationAt(context.slots, port);
  }
  return designation;
}

PciIds configuredIds(const std::string& file) {
  return PciIds(Root().read(file, kLongestPciIds).bytes);
}

}  // namespace local
