#include "tests/bmc/faults/number_range.h"

#include <charconv>

namespace bmc {
namespace {

bool parseNumber(std::string_view text, std::uint64_t& number) {
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end;
}

}  // namespace

std::optional<NumberRange> parseRange(std::string_view text) {
  NumberRange range;
  const std::size_t dash = text.find('-');
  if (!parseNumber(text.substr(0, dash), range.first)) {
    return std::nullopt;
  }
  if (dash == std::string_view::npos) {
    range.last = range.first;
  } else if (dash + 1 < text.size()) {
    if (!parseNumber(text.substr(dash + 1), range.last)) {
      return std::nullopt;
    }
  }
  if (range.last < range.first) {
    return std::nullopt;
  }
  return range;
}

}  // namespace bmc
