#include "suite/local/smbios/host_interface.h"

#include <algorithm>
#include <boost/url/ipv4_address.hpp>
#include <boost/url/ipv6_address.hpp>
#include <cstddef>

#include "suite/local/smbios/smbios_system.h"

namespace local {
namespace {

constexpr std::uint8_t kNetworkInterface = 0x40;
constexpr std::uint8_t kRedfishOverIp = 0x04;
constexpr std::size_t kShortestStructure = 0x0B;
constexpr std::size_t kShortestService = 91;
// A machine has one or two; each is compared with all others.
constexpr std::size_t kMostInterfaces = 64;
constexpr std::uint8_t kIpv4 = 1;
constexpr std::uint8_t kIpv6 = 2;
constexpr std::uint16_t kDefaultPort = 443;
constexpr unsigned kBootstrapByIpmi = 0x01;
// The UUID of a service is in the mixed order of these versions of the
// tables, whatever version they state.
constexpr SmbiosVersion kMixedOrder = {2, 6};

// Bytes that the caller has checked to be there.
template <std::size_t Count>
std::array<std::uint8_t, Count> bytesOf(base::ByteView view) {
  std::array<std::uint8_t, Count> bytes = {};
  for (std::size_t i = 0; i < Count; ++i) {
    bytes[i] = view.byte(i).value_or(0);
  }
  return bytes;
}

IpAssignment assignment(std::optional<std::uint8_t> code) {
  if (!code || *code > static_cast<std::uint8_t>(IpAssignment::kHostSelected)) {
    return IpAssignment::kUnknown;
  }
  return static_cast<IpAssignment>(*code);
}

// The address in a field of 16 bytes, IPv4 in the first 4.
std::string addressText(base::ByteView data, std::size_t formatAt,
                        std::size_t addressAt) {
  const auto format = data.byte(formatAt);
  const auto field = data.slice(addressAt, 16);
  if (!field) {
    return "";
  }
  if (format == kIpv4) {
    const boost::urls::ipv4_address address(bytesOf<4>(*field));
    return address.is_unspecified() ? "" : address.to_string();
  }
  if (format == kIpv6) {
    const boost::urls::ipv6_address address(bytesOf<16>(*field));
    return address.is_unspecified() ? "" : address.to_string();
  }
  return "";
}

std::optional<RedfishOverIp> service(base::ByteView data) {
  if (data.size() < kShortestService) {
    return std::nullopt;
  }
  RedfishOverIp found;
  found.serviceUuid = uuidText(*data.slice(0, 16), kMixedOrder);
  found.hostAssignment = assignment(data.byte(16));
  found.hostAddress = addressText(data, 17, 18);
  found.discovery = assignment(data.byte(50));
  found.serviceAddress = addressText(data, 51, 52);
  found.port = data.word(84).value_or(0);
  if (found.port == 0) {
    found.port = kDefaultPort;
  }
  // The stated length of the name may go past the record, and the name may
  // end earlier, with a NUL.
  const std::string_view name =
      data.from(91).text().substr(0, data.byte(90).value_or(0));
  found.hostName = name.substr(0, std::min(name.find('\0'), name.size()));
  return found;
}

MacAddress mac(base::ByteView device, std::size_t offset) {
  return bytesOf<6>(device.from(offset));
}

// Reads the part of the structure that describes the device: its type, then
// what depends on it, offsets counted from the byte behind the type.
void readDevice(base::ByteView interfaceData, HostInterface& found) {
  const base::ByteView device = interfaceData.from(1);
  const auto word = [&](std::size_t offset) {
    return device.word(offset).value_or(0);
  };
  const std::uint8_t type = interfaceData.byte(0).value_or(0);
  if (type == 0x02 && device.size() >= 4) {
    found.device = InterfaceDevice::kUsb;
    found.vendorId = word(0);
    found.productId = word(2);
  } else if (type == 0x03 && device.size() >= 8) {
    found.device = InterfaceDevice::kPci;
    found.vendorId = word(0);
    found.productId = word(2);
    found.subsystemVendorId = word(4);
    found.subsystemId = word(6);
  } else if (type == 0x04 && device.size() >= 0x0C) {
    found.device = InterfaceDevice::kUsbV2;
    found.vendorId = word(1);
    found.productId = word(3);
    found.mac = mac(device, 6);
    found.bootstrapsCredentials = (word(0x0C) & kBootstrapByIpmi) != 0;
  } else if (type == 0x05 && device.size() >= 0x13) {
    found.device = InterfaceDevice::kPciV2;
    found.vendorId = word(1);
    found.productId = word(3);
    found.subsystemVendorId = word(5);
    found.subsystemId = word(7);
    found.mac = mac(device, 9);
    const unsigned place = device.byte(0x12).value_or(0);
    found.pci = PciAddress{word(0x0F), device.byte(0x11).value_or(0),
                           static_cast<std::uint8_t>(place >> 3U),
                           static_cast<std::uint8_t>(place & 0x07U)};
    found.bootstrapsCredentials = (word(0x13) & kBootstrapByIpmi) != 0;
  }
}

// The protocol records: a count, then type, length and data of each.
std::vector<RedfishOverIp> readServices(base::ByteView records) {
  std::vector<RedfishOverIp> services;
  const unsigned count = records.byte(0).value_or(0);
  std::size_t offset = 1;
  for (unsigned i = 0; i < count; ++i) {
    const auto type = records.byte(offset);
    const auto length = records.byte(offset + 1);
    if (!type || !length) {
      break;
    }
    const auto data = records.slice(offset + 2, *length);
    if (!data) {
      break;
    }
    if (*type == kRedfishOverIp) {
      if (auto found = service(*data)) {
        services.push_back(std::move(*found));
      }
    }
    offset += 2U + *length;
  }
  return services;
}

}  // namespace

std::vector<HostInterface> hostInterfaces(const SmbiosTables& tables) {
  std::vector<HostInterface> interfaces;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosHostInterface)) {
    const base::ByteView formatted = structure->formatted;
    if (formatted.size() < kShortestStructure ||
        formatted.byte(0x04) != kNetworkInterface) {
      continue;
    }
    const std::size_t length = formatted.byte(0x05).value_or(0);
    HostInterface found;
    found.handle = structure->handle;
    if (const auto data = formatted.slice(0x06, length)) {
      readDevice(*data, found);
      found.services = readServices(formatted.from(0x06 + length));
    }
    interfaces.push_back(std::move(found));
    if (interfaces.size() == kMostInterfaces) {
      break;
    }
  }
  return interfaces;
}

std::string macText(const MacAddress& mac) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : mac) {
    if (!text.empty()) {
      text += ':';
    }
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 0x0FU];
  }
  return text;
}

}  // namespace local
