#include "suite/base/escape.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace base {
namespace {

struct CodePoint {
  std::uint32_t value = 0;
  std::size_t length = 0;  // Bytes taken; 0: not UTF-8.
};

// Reads the code point that the text, which is not empty, begins with
// (RFC 3629: shortest forms only, no surrogates, up to U+10FFFF).
CodePoint readCodePoint(std::string_view text) {
  const auto byteAt = [&](std::size_t index) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(text[index]));
  };
  const std::uint32_t lead = byteAt(0);
  if (lead < 0x80) {
    return {lead, 1};
  }
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
    return {};
  }
  std::uint32_t value = lead & (0xFFU >> (length + 1));
  for (std::size_t index = 1; index < length; ++index) {
    if ((byteAt(index) & 0xC0U) != 0x80U) {
      return {};
    }
    value = (value << 6U) | (byteAt(index) & 0x3FU);
  }
  constexpr std::array<std::uint32_t, 5> kSmallest = {0, 0, 0x80, 0x800,
                                                      0x10000};
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (value < kSmallest[length] || value > 0x10FFFF || surrogate) {
    return {};
  }
  return {value, length};
}

bool needsEscape(std::uint32_t value) {
  return value < 0x20 || (value >= 0x7F && value <= 0x9F) || value == 0x2028 ||
         value == 0x2029 || (value >= 0x202A && value <= 0x202E) ||
         (value >= 0x2066 && value <= 0x2069);
}

std::string escapeOf(std::uint32_t value) {
  switch (value) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  std::array<char, 12> escape{};
  std::snprintf(escape.data(), escape.size(),
                value < 0x80 ? "\\x%02x" : "\\u%04x", value);
  return escape.data();
}

}  // namespace

std::string escapeControls(std::string_view text) {
  std::string safe;
  safe.reserve(text.size());
  while (!text.empty()) {
    const CodePoint point = readCodePoint(text);
    const std::size_t length = point.length == 0 ? 1 : point.length;
    if (point.length == 0) {
      std::array<char, 8> escape{};
      std::snprintf(
          escape.data(), escape.size(), "\\x%02x",
          static_cast<unsigned int>(static_cast<unsigned char>(text.front())));
      safe += escape.data();
    } else if (needsEscape(point.value)) {
      safe += escapeOf(point.value);
    } else {
      safe += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return safe;
}

}  // namespace base
