#pragma once

#include <string>
#include <string_view>

namespace redfish {

// Texts are UTF-8 everywhere in the suite; the interfaces of Windows take and
// give UTF-16. What is not well formed becomes U+FFFD.

std::string toUtf8(std::wstring_view text);
std::wstring toUtf16(std::string_view text);

}  // namespace redfish
