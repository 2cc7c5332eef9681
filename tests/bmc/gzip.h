#pragma once

#include <string>
#include <string_view>

namespace bmc {

/// The text in gzip coding (RFC 1952); empty when zlib fails.
std::string gzip(std::string_view text);

}  // namespace bmc
