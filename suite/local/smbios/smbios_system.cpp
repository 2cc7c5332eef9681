#include "suite/local/smbios/smbios_system.h"

#include <array>
#include <cstddef>

namespace local {
namespace {

constexpr std::size_t kUuidLength = 16;
constexpr std::uint8_t kMotherboard = 0x0A;

}  // namespace

std::string uuidText(base::ByteView bytes, SmbiosVersion version) {
  static constexpr std::array<std::size_t, kUuidLength> kLittle = {
      3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  static constexpr char kDigits[] = "0123456789abcdef";
  if (bytes.size() != kUuidLength) {
    return "";
  }
  const bool little = version.atLeast(2, 6);
  bool zeros = true;
  bool ones = true;
  std::string text;
  for (std::size_t i = 0; i < kUuidLength; ++i) {
    const std::uint8_t byte = bytes.byte(little ? kLittle[i] : i).value_or(0);
    zeros = zeros && byte == 0;
    ones = ones && byte == 0xFF;
    if (i == 4 || i == 6 || i == 8 || i == 10) {
      text += '-';
    }
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 0x0FU];
  }
  return zeros || ones ? "" : text;
}

SystemFacts systemFacts(const SmbiosTables& tables) {
  const auto found = tables.ofType(kSmbiosSystem);
  if (found.empty()) {
    return {};
  }
  const SmbiosStructure& structure = *found.front();
  SystemFacts facts;
  facts.manufacturer = structure.string(0x04);
  facts.product = structure.string(0x05);
  facts.version = structure.string(0x06);
  facts.serial = structure.string(0x07);
  if (const auto uuid = structure.formatted.slice(0x08, kUuidLength)) {
    facts.uuid = uuidText(*uuid, tables.version);
  }
  facts.sku = structure.string(0x19);
  facts.family = structure.string(0x1A);
  return facts;
}

BoardFacts boardFacts(const SmbiosTables& tables) {
  const auto found = tables.ofType(kSmbiosBaseboard);
  if (found.empty()) {
    return {};
  }
  const SmbiosStructure* board = found.front();
  for (const SmbiosStructure* candidate : found) {
    if (candidate->formatted.byte(0x0D) == kMotherboard) {
      board = candidate;
      break;
    }
  }
  BoardFacts facts;
  facts.manufacturer = board->string(0x04);
  facts.product = board->string(0x05);
  facts.version = board->string(0x06);
  facts.serial = board->string(0x07);
  return facts;
}

}  // namespace local
