#pragma once

#include <string_view>

namespace base {

/// Compares two texts as a person sorts them: from the left, a run of ASCII
/// digits as one number whatever its leading zeros, everything else byte by
/// byte with A to Z as a to z; a text that ends first comes first. Less than
/// 0, 0 or greater than 0 as the left one comes before, beside or after the
/// right one.
int compareNaturally(std::string_view left, std::string_view right);

/// Whether the left text comes before the right one.
inline bool naturallyBefore(std::string_view left, std::string_view right) {
  return compareNaturally(left, right) < 0;
}

}  // namespace base
