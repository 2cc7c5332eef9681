#include "suite/base/integer.h"

#include <charconv>
#include <system_error>

namespace base {

std::optional<int> parseInteger(std::string_view text) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc{} || stop != end) {
    return std::nullopt;
  }
  return number;
}

}  // namespace base
