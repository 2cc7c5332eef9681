#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/smbios/smbios.h"

namespace local {

using MacAddress = std::array<std::uint8_t, 6>;

/// How an address of the host interface comes about (DSP0270).
enum class IpAssignment : std::uint8_t {
  kUnknown = 0,
  kStatic = 1,
  kDhcp = 2,
  kAutoConfigure = 3,
  kHostSelected = 4
};

/// A controller's Redfish service as the firmware describes it: the "Redfish
/// over IP" protocol record of DSP0270. Addresses are texts, empty when the
/// record states none or one of a family that it does not know.
struct RedfishOverIp {
  std::string serviceUuid;  ///< As uuidText writes it.
  IpAssignment hostAssignment = IpAssignment::kUnknown;
  std::string hostAddress;
  IpAssignment discovery = IpAssignment::kUnknown;
  std::string serviceAddress;
  std::uint16_t port = 443;
  std::string hostName;  ///< As the firmware wrote it.
};

/// What kind of network device leads to the controller (DSP0270).
enum class InterfaceDevice { kUsb, kPci, kUsbV2, kPciV2, kOther };

/// A network host interface: a device of this machine that leads to its
/// management controller (SMBIOS type 42, DSP0270).
struct HostInterface {
  std::uint16_t handle = 0;  ///< Of the structure, for messages.
  InterfaceDevice device = InterfaceDevice::kOther;
  std::uint16_t vendorId = 0;           ///< USB or PCI.
  std::uint16_t productId = 0;          ///< USB product or PCI device.
  std::uint16_t subsystemVendorId = 0;  ///< PCI only.
  std::uint16_t subsystemId = 0;        ///< PCI only.
  std::optional<MacAddress> mac;        ///< Second versions only.
  std::optional<PciAddress> pci;        ///< Second version of PCI only.
  /// The controller hands out accounts over IPMI.
  bool bootstrapsCredentials = false;
  std::vector<RedfishOverIp> services;  ///< In the order of the records.
};

/// The network host interfaces of a machine in table order, one for each
/// controller, at most 64. Every length is checked against what holds it: a
/// structure that lies gives what stands before the lie.
std::vector<HostInterface> hostInterfaces(const SmbiosTables& tables);

/// A MAC address as the kernel writes it: "52:54:00:12:34:56".
std::string macText(const MacAddress& mac);

}  // namespace local
