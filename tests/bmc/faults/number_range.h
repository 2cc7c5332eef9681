#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace bmc {

/// A range of numbers, both ends included; all numbers by default.
struct NumberRange {
  std::uint64_t first = 0;
  std::uint64_t last = std::numeric_limits<std::uint64_t>::max();

  bool contains(std::uint64_t number) const {
    return first <= number && number <= last;
  }
};

/// Reads "3", "3-5" or "3-". Nothing when the text is none of these.
std::optional<NumberRange> parseRange(std::string_view text);

}  // namespace bmc
