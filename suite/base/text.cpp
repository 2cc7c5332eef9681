#include "suite/base/text.h"

#include <cstdint>

namespace base {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::string_view kReplacementBytes = "\xEF\xBF\xBD";

struct CodePoint {
  char32_t value;
  std::size_t size;  // Bytes it takes in the text; 1 for a byte that is wrong.
  bool valid;
};

constexpr CodePoint kInvalid{kReplacement, 1, false};

// Reads one code point as the Unicode standard's table of well-formed byte
// sequences has it: no overlong form, no surrogate, nothing past U+10FFFF.
CodePoint readCodePoint(std::string_view text) {
  const auto byte = [text](std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
  };
  const std::uint8_t lead = byte(0);
  if (lead < 0x80) {
    return {lead, 1, true};
  }
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < size) {
    return kInvalid;
  }
  char32_t value = lead & (0xFFU >> (size + 1));
  for (std::size_t index = 1; index < size; ++index) {
    if ((byte(index) & 0xC0U) != 0x80) {
      return kInvalid;
    }
    value = (value << 6U) | (byte(index) & 0x3FU);
  }
  const bool overlong =
      (size == 3 && value < 0x800) || (size == 4 && value < 0x10000);
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (overlong || surrogate || value > 0x10FFFF) {
    return kInvalid;
  }
  return {value, size, true};
}

bool isControl(char32_t value) {
  return value < 0x20 || (value >= 0x7F && value < 0xA0) || value == 0x2028 ||
         value == 0x2029;
}

bool isDirectional(char32_t value) {
  return (value >= 0x202A && value <= 0x202E) ||
         (value >= 0x2066 && value <= 0x2069);
}

// Writes the blanks that were held back: as they stood, or as a single one
// when a control character was among them.
void flushBlanks(std::string& result, std::size_t& blanks, bool& control) {
  if (blanks > 0 && !result.empty()) {
    result.append(control ? 1 : blanks, ' ');
  }
  blanks = 0;
  control = false;
}

}  // namespace

std::string cleanText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  std::size_t blanks = 0;
  bool control = false;
  while (!text.empty()) {
    const CodePoint point = readCodePoint(text);
    const std::string_view bytes = text.substr(0, point.size);
    text.remove_prefix(point.size);
    if (point.valid && (point.value == ' ' || isControl(point.value))) {
      ++blanks;
      control = control || point.value != ' ';
    } else if (!point.valid || !isDirectional(point.value)) {
      flushBlanks(result, blanks, control);
      result.append(point.valid ? bytes : kReplacementBytes);
    }
  }
  return result;
}

std::string excerpt(std::string_view text, std::size_t limit) {
  constexpr std::string_view kCut = "...";
  std::string result = cleanText(text);
  if (result.size() <= limit) {
    return result;
  }
  std::size_t end = limit - kCut.size();
  while (end > 0 && (static_cast<std::uint8_t>(result[end]) & 0xC0U) == 0x80) {
    --end;
  }
  result.resize(end);
  result.append(kCut);
  return result;
}

}  // namespace base
