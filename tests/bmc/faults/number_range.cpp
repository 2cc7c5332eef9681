#include "tests/bmc/faults/number_range.h"

#include "suite/base/numbers.h"

namespace bmc {

std::optional<NumberRange> parseRange(std::string_view text) {
  const std::size_t dash = text.find('-');
  const auto first = base::parseNumber<std::uint64_t>(text.substr(0, dash));
  if (!first) {
    return std::nullopt;
  }
  NumberRange range;
  range.first = *first;
  if (dash == std::string_view::npos) {
    range.last = range.first;
  } else if (dash + 1 < text.size()) {
    const auto last = base::parseNumber<std::uint64_t>(text.substr(dash + 1));
    if (!last) {
      return std::nullopt;
    }
    range.last = *last;
  }
  return range.last < range.first ? std::nullopt : std::optional(range);
}

}  // namespace bmc
