#pragma once

#include <string>
#include <string_view>

namespace base {

/// A letter A to Z as a to z, whatever the locale; any other byte as it is.
inline char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether a byte is one of the letters A to Z and a to z.
inline bool isLetter(char c) { return lower(c) >= 'a' && lower(c) <= 'z'; }

/// A text with its letters A to Z as a to z.
std::string lowerCase(std::string_view text);

/// Whether two texts are equal when the letters A to Z count as a to z,
/// whatever the locale.
bool equalIgnoringCase(std::string_view left, std::string_view right);

/// Whether a text starts with another one, letter case ignored likewise.
bool startsIgnoringCase(std::string_view text, std::string_view start);

/// Whether a text starts with another one.
inline bool startsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

}  // namespace base
