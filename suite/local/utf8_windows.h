#pragma once

#include <string>
#include <string_view>

namespace local {

/// A text of the system's as UTF-8; what is not well formed becomes U+FFFD.
std::string utf8(std::wstring_view text);

}  // namespace local
