#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/local/facts/root.h"
#include "suite/local/smbios/host_interface.h"

namespace local {

/// A network device of this machine.
struct NetworkDevice {
  std::string name;  ///< As the system calls it: "usb0".
  std::optional<MacAddress> mac;
  // Identity of the device behind it; 0 where it is none of that bus.
  std::uint16_t usbVendorId = 0;
  std::uint16_t usbProductId = 0;
  std::uint16_t pciVendorId = 0;
  std::uint16_t pciDeviceId = 0;
  std::uint16_t pciSubsystemVendorId = 0;
  std::uint16_t pciSubsystemId = 0;
  bool up = false;  ///< Switched on, and with a link.
  /// Its addresses as texts, IPv4 before IPv6.
  std::vector<std::string> addresses;
};

/// The network devices under /sys/class/net, by name, without addresses.
std::vector<NetworkDevice> networkDevices(const Root& root);

/// The network devices of the running system, with their addresses.
std::vector<NetworkDevice> runningDevices();

/// Reads six hexadecimal bytes between colons.
std::optional<MacAddress> parseMac(const std::string& text);

}  // namespace local
