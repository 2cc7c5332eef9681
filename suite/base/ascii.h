#pragma once

#include <string_view>

namespace base {

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
