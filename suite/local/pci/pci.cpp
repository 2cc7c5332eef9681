#include "suite/local/pci/pci.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <tuple>

#include "suite/base/numbers.h"
#include "suite/local/pci/pci_vpd.h"

namespace local {
namespace {

constexpr std::size_t kIdsLimit = 16U * 1024 * 1024;

// A function of the machine and where it hangs.
struct PciFunction {
  std::string folder;
  PciAddress address;
  std::vector<PciAddress> above;  // The ports above it, the nearest first.
  PciIdentity identity;
};

auto key(const PciAddress& address) {
  return std::make_tuple(address.segment, address.bus, address.device,
                         address.function);
}

// The function's link shows the ports above it:
// "../../../devices/pci0000:3a/0000:3a:00.0/0000:3b:00.0".
std::vector<PciAddress> portsAbove(std::string_view link,
                                   const PciAddress& own) {
  std::vector<PciAddress> ports;
  while (!link.empty()) {
    const std::size_t slash = link.rfind('/');
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash + 1;
    const auto address = parsePciAddress(link.substr(begin));
    if (!address) {
      break;
    }
    if (!(*address == own)) {
      ports.push_back(*address);
    }
    link = link.substr(0, begin == 0 ? 0 : begin - 1);
  }
  return ports;
}

std::uint16_t identity(const Root& root, const std::string& path) {
  return static_cast<std::uint16_t>(
      base::hexadecimal(root.line(path)).value_or(0) & 0xFFFFU);
}

std::vector<PciFunction> adapters(const Root& root) {
  std::vector<PciFunction> found;
  const std::string bus = "/sys/bus/pci/devices";
  for (const std::string& name : root.list(bus)) {
    const auto address = parsePciAddress(name);
    if (!address || address->function != 0) {
      continue;
    }
    PciFunction function;
    function.folder = bus + "/" + name;
    function.address = *address;
    const auto code = base::hexadecimal(root.line(function.folder + "/class"));
    // A virtual function is a share of the adapter that made it.
    if (!code || !isAdapterClass(*code) ||
        !root.link(function.folder + "/physfn").empty()) {
      continue;
    }
    function.above = portsAbove(root.link(function.folder), *address);
    function.identity = {identity(root, function.folder + "/vendor"),
                         identity(root, function.folder + "/device"),
                         identity(root, function.folder + "/subsystem_vendor"),
                         identity(root, function.folder + "/subsystem_device")};
    found.push_back(std::move(function));
  }
  return found;
}

std::string designationAt(const std::vector<SlotFacts>& places,
                          const PciAddress& address) {
  for (const SlotFacts& place : places) {
    if (place.address == address) {
      return place.designation;
    }
  }
  return "";
}

PciIds readIds(const Root& root, const std::string& configured) {
  if (!configured.empty()) {
    return configuredIds(configured);  // Also for a recorded machine.
  }
  for (const char* path :
       {"/usr/share/hwdata/pci.ids", "/usr/share/misc/pci.ids"}) {
    Content content = root.read(path, kIdsLimit);
    if (content.access == Access::kRead) {
      return PciIds(std::move(content.bytes));
    }
  }
  return PciIds("");
}

}  // namespace

PciIds configuredIds(const std::string& file) {
  return PciIds(Root().read(file, kIdsLimit).bytes);
}

void sortByAddress(std::vector<PciFacts>& facts) {
  std::stable_sort(facts.begin(), facts.end(),
                   [](const PciFacts& a, const PciFacts& b) {
                     return key(a.address) < key(b.address);
                   });
}

std::string designationOf(const PciAddress& address,
                          const std::vector<PciAddress>& above,
                          const PciContext& context) {
  std::string slot = designationAt(context.slots, address);
  if (slot.empty()) {
    slot = designationAt(context.onboard, address);
  }
  for (const PciAddress& port : above) {
    if (!slot.empty()) {
      break;
    }
    slot = designationAt(context.slots, port);
  }
  return slot;
}

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

bool isAdapterClass(std::uint32_t classCode) {
  constexpr std::uint32_t kSmBus = 0x0C05;
  if (classCode >> 8U == kSmBus) {
    return false;
  }
  switch (classCode >> 16U) {
    case 0x01:  // Mass storage.
    case 0x02:  // Network.
    case 0x03:  // Display.
    case 0x04:  // Multimedia.
    case 0x07:  // Communication.
    case 0x0B:  // Processor.
    case 0x0C:  // Serial bus.
    case 0x0D:  // Wireless.
    case 0x10:  // Encryption.
    case 0x12:  // Processing accelerator.
      return true;
    default:
      return false;
  }
}

std::vector<PciFacts> pciFacts(const Root& root, const PciContext& context) {
  const std::vector<PciFunction> functions = adapters(root);
  if (functions.empty()) {
    return {};
  }
  const PciIds ids = readIds(root, context.idsFile);
  std::vector<std::string> folders;
  folders.reserve(functions.size());
  for (const PciFunction& function : functions) {
    folders.push_back(function.folder);
  }
  const auto vitals = readVpds(root, folders, context.vpdLimit);

  std::vector<PciFacts> facts;
  for (const PciFunction& function : functions) {
    const PciNames names = ids.names(function.identity);
    PciFacts fact;
    fact.address = function.address;
    fact.vendorId = function.identity.vendor;
    fact.deviceId = function.identity.device;
    fact.manufacturer = names.manufacturer;
    fact.model = names.model;
    fact.slot = designationOf(function.address, function.above, context);
    fact.driverBound = !root.link(function.folder + "/driver").empty();
    const auto vital = vitals.find(function.folder);
    if (vital != vitals.end()) {
      fact.serial = vital->second.serial;
      fact.partNumber = vital->second.partNumber;
    }
    facts.push_back(std::move(fact));
  }
  sortByAddress(facts);
  return facts;
}

}  // namespace local
