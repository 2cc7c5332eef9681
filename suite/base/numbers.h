#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace base {

/// The number behind a prefix that makes up the whole name: 12 for "cpu12"
/// and prefix "cpu". Nothing for any other name.
std::optional<unsigned> numberBehind(std::string_view name,
                                     std::string_view prefix);

/// The names that are a prefix and a number, with it, in its order: "hwmon2"
/// before "hwmon10".
std::vector<std::pair<unsigned, std::string>> numbered(
    const std::vector<std::string>& names, std::string_view prefix);

/// A text that is wholly a decimal number.
std::optional<long> decimal(std::string_view text);

/// A text that is wholly a hexadecimal number of at most 32 bits, with or
/// without "0x" before it.
std::optional<std::uint32_t> hexadecimal(std::string_view text);

}  // namespace base
