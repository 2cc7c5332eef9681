#include "tests/suite/local/host_interface_builder.h"

namespace local {
namespace {

std::string word(unsigned value) {
  return {static_cast<char>(value & 0xFFU), static_cast<char>(value >> 8U)};
}

}  // namespace

std::string serviceRecord(const std::string& hostName) {
  std::string data(91, '\0');
  data.replace(
      0, 16,
      std::string("\x33\x22\x11\x01\x55\x44\x77\x66\x88\x99\xaa\xbb\xcc\xdd"
                  "\xee\xff",
                  16));
  data[16] = 1;  // Static host address, IPv4.
  data[17] = 1;
  data.replace(18, 4, std::string("\xa9\xfe\x00\x12", 4));
  data[50] = 1;  // Static service address, IPv4.
  data[51] = 1;
  data.replace(52, 4, std::string("\xa9\xfe\x00\x11", 4));
  data.replace(84, 2, word(443));
  data[90] = static_cast<char>(hostName.size());
  return data + hostName;
}

std::string usbDevice(unsigned vendor, unsigned product) {
  return '\x02' + word(vendor) + word(product) + "\x02";
}

std::string pciDevice(unsigned vendor, unsigned device) {
  return '\x03' + word(vendor) + word(device) + word(0x1111) + word(0x2222);
}

std::string usbV2Device(unsigned vendor, unsigned product,
                        const std::string& mac, unsigned characteristics) {
  return std::string("\x04\x11") + word(vendor) + word(product) + '\0' + mac +
         word(characteristics) + word(0);
}

std::string pciV2Device(unsigned vendor, unsigned device,
                        const std::string& mac, unsigned characteristics) {
  return std::string("\x05\x18") + word(vendor) + word(device) + word(0x1111) +
         word(0x2222) + mac + word(0) + '\x3b' + '\x09' +
         word(characteristics) + word(0);
}

Structure hostInterface(const std::string& device,
                        const std::vector<std::string>& records) {
  std::string tail(1, static_cast<char>(records.size()));
  for (const std::string& record : records) {
    tail += '\x04';
    tail += static_cast<char>(record.size());
    tail += record;
  }
  return Structure(42, 6 + device.size() + tail.size())
      .byte(0x04, 0x40)
      .byte(0x05, static_cast<unsigned>(device.size()))
      .bytes(0x06, device + tail);
}

}  // namespace local
