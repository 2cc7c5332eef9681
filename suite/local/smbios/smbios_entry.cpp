#include "suite/local/smbios/smbios_entry.h"

#include <string_view>

namespace local {
namespace {

bool startsWith(base::ByteView bytes, std::size_t offset,
                std::string_view anchor) {
  const auto slice = bytes.slice(offset, anchor.size());
  return slice && slice->text() == anchor;
}

// All bytes of an entry point, its checksum included, add up to 0.
bool sumsToZero(base::ByteView bytes, std::size_t length) {
  const auto area = bytes.slice(0, length);
  if (!area || length == 0) {
    return false;
  }
  unsigned sum = 0;
  for (const char byte : area->text()) {
    sum += static_cast<unsigned char>(byte);
  }
  return (sum & 0xFFU) == 0;
}

// Some firmware states the version as people say it: 2.31 for 2.3, 2.51 for
// 2.6, the version that its writers had in hand.
SmbiosVersion corrected(std::uint8_t major, std::uint8_t minor) {
  if (major == 2 && (minor == 31 || minor == 33)) {
    return {2, 3};
  }
  if (major == 2 && minor == 51) {
    return {2, 6};
  }
  return {major, minor};
}

std::optional<SmbiosEntry> parse64(base::ByteView bytes) {
  const auto major = bytes.byte(0x07);
  const auto minor = bytes.byte(0x08);
  const auto length = bytes.dword(0x0C);
  if (!major || !minor || !length) {
    return std::nullopt;
  }
  SmbiosEntry entry;
  entry.version = corrected(*major, *minor);
  entry.tableLength = *length;
  entry.checksumRight = sumsToZero(bytes, bytes.byte(0x06).value_or(0));
  return entry;
}

std::optional<SmbiosEntry> parse32(base::ByteView bytes) {
  const auto major = bytes.byte(0x06);
  const auto minor = bytes.byte(0x07);
  const auto length = bytes.word(0x16);
  const auto count = bytes.word(0x1C);
  if (!major || !minor || !length || !count) {
    return std::nullopt;
  }
  SmbiosEntry entry;
  entry.version = corrected(*major, *minor);
  entry.tableLength = *length;
  entry.structureCount = *count;
  // Version 2.1 printed 1Eh as the length of this entry point, which has 1Fh
  // bytes; firmware that follows it sums over all of them.
  const std::size_t stated = bytes.byte(0x05).value_or(0);
  entry.checksumRight = sumsToZero(bytes, stated == 0x1E ? 0x1F : stated);
  return entry;
}

std::optional<SmbiosEntry> parseTablePart(base::ByteView bytes) {
  const auto length = bytes.word(0x06);
  const auto count = bytes.word(0x0C);
  const auto revision = bytes.byte(0x0E);  // Binary-coded decimal.
  if (!length || !count || !revision) {
    return std::nullopt;
  }
  SmbiosEntry entry;
  entry.version = {static_cast<std::uint8_t>(*revision >> 4U),
                   static_cast<std::uint8_t>(*revision & 0x0FU)};
  entry.tableLength = *length;
  entry.structureCount = *count;
  entry.checksumRight = sumsToZero(bytes, 0x0F);
  return entry;
}

}  // namespace

std::optional<SmbiosEntry> parseSmbiosEntry(base::ByteView bytes) {
  if (startsWith(bytes, 0, "_SM3_")) {
    return parse64(bytes);
  }
  if (startsWith(bytes, 0, "_SM_")) {
    return parse32(bytes);
  }
  if (startsWith(bytes, 0, "_DMI_")) {
    return parseTablePart(bytes);
  }
  return std::nullopt;
}

}  // namespace local
