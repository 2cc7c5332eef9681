#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace redfish {

/// Overwrites memory; the compiler may not drop it.
void overwrite(void* bytes, std::size_t size) noexcept;

/// Overwrites a text's bytes, all the room that it holds, and empties it; the
/// compiler may not drop it. A text that was moved away is worth wiping, too:
/// a short one leaves its bytes behind.
void wipe(std::string& text) noexcept;

/// The text with every occurrence of the secret replaced by "***". A service
/// may repeat what it was sent. Secrets shorter than 4 bytes are left alone:
/// hiding them would garble the text and tell more than it hides.
std::string withoutSecret(std::string text, std::string_view secret);

}  // namespace redfish
