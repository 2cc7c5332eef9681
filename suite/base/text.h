#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

/// A text from outside, made fit for messages and reports: surrounding blanks
/// are gone, each run of blanks that holds a control character (C0, DEL, C1,
/// U+2028, U+2029) is one blank, overrides and isolates of the writing
/// direction (U+202A to U+202E, U+2066 to U+2069) are dropped, and bytes that
/// are no UTF-8 become U+FFFD.
std::string cleanText(std::string_view text);

/// The same, cut to at most `limit` bytes (4 or more); a cut text ends in
/// "...".
std::string excerpt(std::string_view text, std::size_t limit);

}  // namespace base
