#pragma once

#include <string>
#include <string_view>

namespace base {

// Letters, digits and blanks of ASCII, whatever the locale.

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }

inline bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

inline bool isAlphanumeric(char c) { return isLetter(c) || isDigit(c); }

/// A letter A to Z as a to z; any other character unchanged.
inline char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// A text with the letters A to Z as a to z.
std::string lowerCase(std::string_view text);

/// Whether two texts are equal when the letters A to Z count as a to z.
bool equalIgnoringCase(std::string_view left, std::string_view right);

/// Whether a text starts with another one, letter case ignored likewise.
bool startsIgnoringCase(std::string_view text, std::string_view start);

/// Whether a text starts with another one.
inline bool startsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

/// A text without the blanks, tabs and line ends around it.
std::string_view trimmed(std::string_view text);

}  // namespace base
