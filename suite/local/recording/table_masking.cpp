#include "suite/local/recording/table_masking.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "suite/base/numbers.h"
#include "suite/local/pci/pci_vpd.h"
#include "suite/local/smbios/host_interface.h"
#include "suite/local/smbios/smbios_system.h"

namespace local {
namespace {

constexpr std::size_t kMacBytes = 6;
constexpr std::size_t kUuidBytes = 16;
constexpr std::size_t kSystemUuid = 0x08;

// Where the numbers of serial and asset texts stand in the structures.
// clang-format off
const std::map<std::uint8_t, std::vector<std::size_t>> kTextsToMask = {
    {kSmbiosSystem,        {0x07}},
    {kSmbiosBaseboard,     {0x07, 0x08}},
    {kSmbiosProcessor,     {0x20, 0x21}},
    {kSmbiosSlot,          {}},
    {kSmbiosMemoryArray,   {}},
    {kSmbiosMemoryDevice,  {0x18, 0x19}},
    {kSmbiosPowerSupply,   {0x08, 0x09}},
    {kSmbiosOnboardDevice, {}},
    {kSmbiosHostInterface, {0x0C}},
    {kSmbiosEnd,           {}},
};
// clang-format on

// A number of some bytes that stands in a structure.
struct Place {
  std::size_t offset;
  std::size_t length;
};

// Where the UUIDs and MAC addresses of a structure stand: that of the system;
// of a host interface those in its device part behind 06h and in the records
// after it (DSP0270).
std::vector<Place> identifiersIn(const SmbiosStructure& structure) {
  if (structure.type == kSmbiosSystem) {
    return {{kSystemUuid, kUuidBytes}};
  }
  std::vector<Place> places;
  if (structure.type != kSmbiosHostInterface) {
    return places;
  }
  const auto byte = [&structure](std::size_t offset) -> std::size_t {
    return structure.formatted.byte(offset).value_or(0);
  };
  if (byte(6) == 4 || byte(6) == 5) {
    places.push_back({7U + (byte(6) == 4 ? 6U : 9U), kMacBytes});
  }
  std::size_t offset = 7 + byte(5);
  for (std::size_t left = byte(6 + byte(5)); left > 0; --left) {
    if (byte(offset) == 4) {
      places.push_back({offset + 2, kUuidBytes});
    }
    offset += 2 + byte(offset + 1);
  }
  return places;
}

// The bytes as kernel and services write them: a UUID or a MAC address.
std::string textAt(std::string_view bytes, const Place& place,
                   SmbiosVersion version) {
  const base::ByteView view(bytes.substr(place.offset, place.length));
  if (place.length == kUuidBytes) {
    return uuidText(view, version);
  }
  MacAddress mac = {};
  for (std::size_t i = 0; i < mac.size(); ++i) {
    mac[i] = view.byte(i).value_or(0);
  }
  return macText(mac);
}

// Puts the bytes of a text that `textAt` could have written in their place.
void putText(std::string& bytes, const Place& place, SmbiosVersion version,
             const std::string& text) {
  std::string digits;
  std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
               [](char c) { return c != '-' && c != ':'; });
  if (digits.size() != 2 * place.length) {
    return;  // A UUID that stands for none has no text.
  }
  std::string order(place.length, '\0');  // Where each byte stands.
  for (std::size_t i = 0; i < order.size(); ++i) {
    order[i] = static_cast<char>(i);
  }
  std::string shown = textAt(order, {0, place.length}, version);
  shown.erase(std::remove_if(shown.begin(), shown.end(),
                             [](char c) { return c == '-' || c == ':'; }),
              shown.end());
  for (std::size_t i = 0; i < place.length; ++i) {
    const auto at = base::hexadecimal(shown.substr(2 * i, 2));
    const auto byte = base::hexadecimal(digits.substr(2 * i, 2));
    if (at && byte) {
      bytes[place.offset + *at] = static_cast<char>(*byte);
    }
  }
}

bool liesIn(const Place& place, const SmbiosStructure& structure) {
  return place.offset + place.length <= structure.formatted.size();
}

// The texts of a structure, with what identifies masked.
std::string maskTexts(const SmbiosStructure& structure,
                      const std::vector<std::size_t>& offsets,
                      masking::Masker& masker) {
  std::string masked;
  std::string_view left = structure.strings;
  for (std::size_t number = 1; !left.empty(); ++number) {
    const std::string_view text = left.substr(0, left.find('\0'));
    const bool identifies =
        std::any_of(offsets.begin(), offsets.end(), [&](std::size_t offset) {
          return structure.formatted.byte(offset).value_or(0) == number;
        });
    masked += identifies ? masker.value(text) : masker.text(text);
    left.remove_prefix(text.size());
    if (!left.empty()) {
      masked += '\0';
      left.remove_prefix(1);
    }
  }
  return masked;
}

std::string maskStructure(const SmbiosStructure& structure,
                          const std::vector<std::size_t>& offsets,
                          SmbiosVersion version, masking::Masker& masker) {
  std::string bytes(structure.formatted.text());
  for (const Place& place : identifiersIn(structure)) {
    if (liesIn(place, structure)) {
      putText(bytes, place, version,
              masker.value(textAt(bytes, place, version)));
    }
  }
  return bytes + maskTexts(structure, offsets, masker) + std::string(2, '\0');
}

std::string vpdField(const std::string& keyword, const std::string& value) {
  return keyword + static_cast<char>(value.size()) + value;
}

}  // namespace

void noteTable(const SmbiosTables& tables, masking::Masker& masker) {
  for (const SmbiosStructure& structure : tables.structures) {
    const auto offsets = kTextsToMask.find(structure.type);
    if (offsets == kTextsToMask.end()) {
      continue;
    }
    for (const std::size_t offset : offsets->second) {
      masker.note(structure.string(offset));
    }
    for (const Place& place : identifiersIn(structure)) {
      if (liesIn(place, structure)) {
        masker.note(textAt(structure.formatted.text(), place, tables.version));
      }
    }
  }
}

void noteVpd(base::ByteView bytes, masking::Masker& masker) {
  masker.note(parseVpd(bytes).serial);
}

std::string maskTable(const SmbiosTables& tables, masking::Masker& masker) {
  std::string bytes;
  for (const SmbiosStructure& structure : tables.structures) {
    const auto offsets = kTextsToMask.find(structure.type);
    if (offsets != kTextsToMask.end()) {
      bytes +=
          maskStructure(structure, offsets->second, tables.version, masker);
    }
  }
  return bytes;
}

std::string entryPointOf(SmbiosVersion version, std::size_t length) {
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

std::string maskVpd(base::ByteView bytes, masking::Masker& masker) {
  const VitalProductData data = parseVpd(bytes);
  const std::string fields = vpdField("PN", data.partNumber) +
                             vpdField("SN", masker.value(data.serial));
  std::string masked = "\x90";
  masked += static_cast<char>(fields.size() & 0xFFU);
  masked += static_cast<char>(fields.size() >> 8U);
  return masked + fields + '\x78';
}

}  // namespace local
