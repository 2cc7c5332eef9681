#include "suite/local/controller/network.h"

#include <cstddef>
#include <string_view>

#include "suite/base/numbers.h"

namespace local {
namespace {

// An id in an attribute file; 0 when there is none.
std::uint16_t identity(const Root& root, const std::string& path) {
  const std::uint32_t value = base::hexadecimal(root.line(path)).value_or(0);
  return value <= 0xFFFF ? static_cast<std::uint16_t>(value) : std::uint16_t{0};
}

// The kernel's IFF_UP.
constexpr std::uint32_t kSwitchedOn = 1;

bool isUp(const Root& root, const std::string& folder) {
  const std::uint32_t flags =
      base::hexadecimal(root.line(folder + "/flags")).value_or(0);
  const std::string state = root.line(folder + "/operstate");
  // Drivers that do not keep a state say "unknown", and tell of the link all
  // the same where they know of it.
  const bool linked = state == "up" || (state == "unknown" &&
                                        root.line(folder + "/carrier") != "0");
  return (flags & kSwitchedOn) != 0 && linked;
}

}  // namespace

std::optional<MacAddress> parseMac(const std::string& text) {
  MacAddress mac = {};
  if (text.size() != mac.size() * 3 - 1) {
    return std::nullopt;
  }
  std::string_view pair = text;
  for (std::size_t i = 0; i < mac.size(); ++i) {
    const auto byte = base::parseNumber<std::uint8_t>(pair.substr(0, 2), 16);
    if (!byte || (i + 1 < mac.size() && pair[2] != ':')) {
      return std::nullopt;
    }
    mac[i] = *byte;
    pair.remove_prefix(i + 1 < mac.size() ? 3 : 2);
  }
  return mac;
}

std::vector<NetworkDevice> networkDevices(const Root& root) {
  std::vector<NetworkDevice> devices;
  const std::string net = "/sys/class/net";
  for (const std::string& name : root.list(net)) {
    const std::string folder = net + "/" + name;
    NetworkDevice device;
    device.name = name;
    device.mac = parseMac(root.line(folder + "/address"));
    // "device" is the function of the card: a PCI function itself, or an
    // interface of a USB device, whose identity stands one folder above.
    const std::string behind = folder + "/device";
    device.usbVendorId = identity(root, behind + "/../idVendor");
    device.usbProductId = identity(root, behind + "/../idProduct");
    device.pciVendorId = identity(root, behind + "/vendor");
    device.pciDeviceId = identity(root, behind + "/device");
    device.pciSubsystemVendorId = identity(root, behind + "/subsystem_vendor");
    device.pciSubsystemId = identity(root, behind + "/subsystem_device");
    device.up = isUp(root, folder);
    devices.push_back(std::move(device));
  }
  return devices;
}

}  // namespace local
