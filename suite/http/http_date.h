#pragma once

#include <ctime>
#include <optional>
#include <string_view>

namespace http {

/// Reads a date of a header in its preferred form, "Sun, 06 Nov 1994 08:49:37
/// GMT" (RFC 9110, 5.6.7). Years after 2900 count as 2900. Returns nullopt if
/// the text is none.
std::optional<std::time_t> parseDate(std::string_view text);

}  // namespace http
