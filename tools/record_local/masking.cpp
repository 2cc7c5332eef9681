#include "tools/record_local/masking.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "suite/base/ascii.h"
#include "suite/local/pci/pci_vpd.h"

namespace record {
namespace {

constexpr char kMask = 'X';
constexpr char kMaskDigit = 'a';  // A hexadecimal one.

// Where the numbers of serial and asset texts stand in the structures.
// clang-format off
const std::map<std::uint8_t, std::vector<std::size_t>> kTextsToMask = {
    {local::kSmbiosSystem,        {0x07}},
    {local::kSmbiosBaseboard,     {0x07, 0x08}},
    {local::kSmbiosProcessor,     {0x20, 0x21}},
    {local::kSmbiosSlot,          {}},
    {local::kSmbiosMemoryArray,   {}},
    {local::kSmbiosMemoryDevice,  {0x18, 0x19}},
    {local::kSmbiosPowerSupply,   {0x08, 0x09}},
    {local::kSmbiosOnboardDevice, {}},
    {local::kSmbiosHostInterface, {0x0C}},
    {local::kSmbiosEnd,           {}},
};
// clang-format on

void fill(std::string& bytes, std::size_t offset, std::size_t length) {
  for (std::size_t i = offset; i < offset + length && i < bytes.size(); ++i) {
    bytes[i] = kMask;
  }
}

// Masks the MAC address and the services' UUIDs of a host interface: the
// device part behind 06h, then the records (DSP0270).
void maskHostInterface(std::string& bytes, MacMask& macs) {
  const auto byte = [&](std::size_t offset) -> std::size_t {
    return base::ByteView(bytes).byte(offset).value_or(0);
  };
  const std::size_t macAt = byte(6) == 4 ? 7 + 6 : byte(6) == 5 ? 7 + 9 : 0;
  if (macAt != 0 && macAt + 6 <= bytes.size()) {
    local::MacAddress mac = {};
    for (std::size_t i = 0; i < mac.size(); ++i) {
      mac[i] = static_cast<std::uint8_t>(byte(macAt + i));
    }
    mac = macs(mac);
    std::copy(mac.begin(), mac.end(),
              bytes.begin() + static_cast<std::ptrdiff_t>(macAt));
  }
  std::size_t offset = 7 + byte(5);
  for (std::size_t left = byte(6 + byte(5)); left > 0; --left) {
    if (byte(offset) == 4) {
      fill(bytes, offset + 2, 16);
    }
    offset += 2 + byte(offset + 1);
  }
}

// The texts of a structure, the ones with these numbers masked.
std::string maskTexts(std::string texts,
                      const std::vector<std::size_t>& numbers) {
  std::size_t number = 1;
  for (char& c : texts) {
    if (c == '\0') {
      ++number;
    } else if (std::count(numbers.begin(), numbers.end(), number) != 0 &&
               base::isAlphanumeric(c)) {
      c = kMask;
    }
  }
  return texts;
}

std::string maskStructure(const local::SmbiosStructure& structure,
                          const std::vector<std::size_t>& offsets,
                          MacMask& macs) {
  std::vector<std::size_t> numbers;
  numbers.reserve(offsets.size());
  for (const std::size_t offset : offsets) {
    numbers.push_back(structure.formatted.byte(offset).value_or(0));
  }
  std::string bytes(structure.formatted.text());
  if (structure.type == local::kSmbiosSystem) {
    fill(bytes, 0x08, 16);
  }
  if (structure.type == local::kSmbiosHostInterface) {
    maskHostInterface(bytes, macs);
  }
  bytes += maskTexts(std::string(structure.strings), numbers);
  return bytes + std::string(2, '\0');
}

std::string vpdField(const std::string& keyword, const std::string& value) {
  return keyword + static_cast<char>(value.size()) + value;
}

}  // namespace

std::string maskText(const std::string& text) {
  std::string masked = text;
  std::replace_if(masked.begin(), masked.end(), base::isAlphanumeric, kMask);
  return masked;
}

std::string maskUuid(const std::string& uuid) {
  std::string masked = uuid;
  std::replace_if(masked.begin(), masked.end(), base::isAlphanumeric,
                  kMaskDigit);
  return masked;
}

local::MacAddress MacMask::operator()(const local::MacAddress& mac) {
  const auto number = static_cast<unsigned>(numbers_.size() + 1);
  const unsigned own = numbers_.emplace(mac, number).first->second;
  return {mac[0],
          mac[1],
          mac[2],
          static_cast<std::uint8_t>(own >> 16U & 0xFFU),
          static_cast<std::uint8_t>(own >> 8U & 0xFFU),
          static_cast<std::uint8_t>(own & 0xFFU)};
}

std::string maskTable(const local::SmbiosTables& tables, MacMask& macs) {
  std::string bytes;
  for (const local::SmbiosStructure& structure : tables.structures) {
    const auto offsets = kTextsToMask.find(structure.type);
    if (offsets == kTextsToMask.end()) {
      continue;
    }
    bytes += maskStructure(structure, offsets->second, macs);
  }
  return bytes;
}

std::string entryPointOf(local::SmbiosVersion version, std::size_t length) {
  std::string bytes(0x18, '\0');
  bytes.replace(0, 5, "_SM3_");
  bytes[0x06] = 0x18;
  bytes[0x07] = static_cast<char>(version.major);
  bytes[0x08] = static_cast<char>(version.minor);
  bytes[0x0A] = 1;  // Revision of the entry point itself.
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[0x0C + i] = static_cast<char>(length >> (8U * i) & 0xFFU);
  }
  unsigned sum = 0;
  for (const char byte : bytes) {
    sum += static_cast<unsigned char>(byte);
  }
  bytes[0x05] = static_cast<char>(0x100U - (sum & 0xFFU));
  return bytes;
}

std::string maskVpd(base::ByteView bytes) {
  const local::VitalProductData data = local::parseVpd(bytes);
  const std::string fields =
      vpdField("PN", data.partNumber) + vpdField("SN", maskText(data.serial));
  std::string masked = "\x90";
  masked += static_cast<char>(fields.size() & 0xFFU);
  masked += static_cast<char>(fields.size() >> 8U);
  return masked + fields + '\x78';
}

}  // namespace record
