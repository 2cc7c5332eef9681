#pragma once

#include <string>
#include <string_view>

namespace http {

/// Bytes in base 64 (RFC 4648, 4), in one line.
std::string toBase64(std::string_view bytes);

/// The bytes that a text in base 64 stands for, line ends within it being
/// skipped; empty when it is none.
std::string fromBase64(std::string_view text);

}  // namespace http
