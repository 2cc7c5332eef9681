#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

namespace base {

/// The number that the whole text is: digits of the base, for signed types
/// with a leading minus or none; for floating-point types a decimal number.
/// Returns nullopt for any other text and for numbers beyond the type.
/// Independent of the locale.
template <typename Number>
std::optional<Number> parseNumber(std::string_view text, int base = 10) {
  Number value = 0;
  const char* const end = text.data() + text.size();
  std::from_chars_result result = {};
  if constexpr (std::is_floating_point_v<Number>) {
    static_cast<void>(base);
    result = std::from_chars(text.data(), end, value);
  } else {
    result = std::from_chars(text.data(), end, value, base);
  }
  if (result.ec != std::errc() || result.ptr != end) {
    return std::nullopt;
  }
  return value;
}

/// The number behind a prefix that makes up the whole name: 12 for "cpu12"
/// and prefix "cpu". Returns nullopt for any other name.
std::optional<unsigned> numberBehind(std::string_view name,
                                     std::string_view prefix);

/// The names that are a prefix and a number, with it, in its order: "hwmon2"
/// before "hwmon10".
std::vector<std::pair<unsigned, std::string>> numbered(
    const std::vector<std::string>& names, std::string_view prefix);

/// A text that is wholly a hexadecimal number of at most 32 bits, with or
/// without "0x" before it.
std::optional<std::uint32_t> hexadecimal(std::string_view text);

}  // namespace base
