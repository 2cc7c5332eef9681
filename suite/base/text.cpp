#include "suite/base/text.h"

#include <algorithm>
#include <array>
#include <boost/locale/utf.hpp>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace base {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

struct CodePoint {
  char32_t value = 0;
  std::string_view bytes;  // As they stand in the text; one if not valid.
  bool valid = false;
};

// Takes one code point off the front of a text that is not empty: well-formed
// UTF-8 (no overlong form, no surrogate, nothing past U+10FFFF), or one byte
// that is not.
CodePoint takeCodePoint(std::string_view& text) {
  namespace utf = boost::locale::utf;
  const char* next = text.data();
  const utf::code_point value =
      utf::utf_traits<char>::decode(next, text.data() + text.size());
  const bool valid = utf::is_valid_codepoint(value);
  const std::size_t size =
      valid ? static_cast<std::size_t>(next - text.data()) : 1;
  const CodePoint point{value, text.substr(0, size), valid};
  text.remove_prefix(size);
  return point;
}

// Takes the ASCII from `lowest` to '~' off the front of a text, which most
// texts are throughout and which needs no decoding.
std::string_view takePlain(std::string_view& text, char lowest) {
  std::size_t size = 0;
  while (size < text.size() && text[size] >= lowest && text[size] <= '~') {
    ++size;
  }
  const std::string_view plain = text.substr(0, size);
  text.remove_prefix(size);
  return plain;
}

bool isControl(char32_t value) {
  return value < 0x20 || (value >= 0x7F && value < 0xA0) || value == 0x2028 ||
         value == 0x2029;
}

struct Range {
  char32_t first;
  char32_t last;
};

// Unicode 15.0, category Cf (format characters), and the noncharacters of its
// basic plane; the whole block of tags and the selectors behind it.
constexpr Range kUnseen[] = {
    {0xAD, 0xAD},       {0x600, 0x605},     {0x61C, 0x61C},
    {0x6DD, 0x6DD},     {0x70F, 0x70F},     {0x890, 0x891},
    {0x8E2, 0x8E2},     {0x180E, 0x180E},   {0x200B, 0x200F},
    {0x202A, 0x202E},   {0x2060, 0x206F},   {0xFDD0, 0xFDEF},
    {0xFEFF, 0xFEFF},   {0xFFF9, 0xFFFB},   {0x110BD, 0x110BD},
    {0x110CD, 0x110CD}, {0x13430, 0x1343F}, {0x1BCA0, 0x1BCA3},
    {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF},
};

// Whether a character is not seen itself, but may change what is seen of
// others, or make texts differ that look alike.
bool isUnseen(char32_t value) {
  constexpr char32_t kNoncharacter = 0xFFFE;  // Two end each plane.
  if ((value & kNoncharacter) == kNoncharacter) {
    return true;
  }
  return std::any_of(std::begin(kUnseen), std::end(kUnseen),
                     [value](const Range& range) {
                       return value >= range.first && value <= range.last;
                     });
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

std::string numericEscape(const char* format, std::uint32_t value) {
  std::array<char, 12> escape{};
  std::snprintf(escape.data(), escape.size(), format, value);
  return escape.data();
}

std::string escapeOf(const CodePoint& point) {
  if (!point.valid) {
    return numericEscape("\\x%02x",
                         static_cast<std::uint8_t>(point.bytes.front()));
  }
  switch (point.value) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return numericEscape(point.value < 0x80 ? "\\x%02x" : "\\u%04x",
                           point.value);
  }
}

}  // namespace

std::string cleanText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  std::size_t blanks = 0;
  bool control = false;
  while (!text.empty()) {
    if (const std::string_view plain = takePlain(text, '!'); !plain.empty()) {
      flushBlanks(result, blanks, control);
      result.append(plain);
      continue;
    }
    const CodePoint point = takeCodePoint(text);
    if (point.valid && (point.value == ' ' || isControl(point.value))) {
      ++blanks;
      control = control || point.value != ' ';
    } else if (!point.valid || !isUnseen(point.value)) {
      flushBlanks(result, blanks, control);
      result.append(point.valid ? point.bytes : kReplacement);
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
  while (end > 0 &&
         boost::locale::utf::utf_traits<char>::is_trail(result[end])) {
    --end;
  }
  result.resize(end);
  result.append(kCut);
  return result;
}

std::string escapeControls(std::string_view text) {
  std::string safe;
  safe.reserve(text.size());
  while (true) {
    safe += takePlain(text, ' ');
    if (text.empty()) {
      return safe;
    }
    const CodePoint point = takeCodePoint(text);
    const bool shown =
        point.valid && !isControl(point.value) && !isUnseen(point.value);
    if (shown) {
      safe += point.bytes;
    } else {
      safe += escapeOf(point);
    }
  }
}

}  // namespace base
