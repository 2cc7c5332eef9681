#pragma once

#include <cstddef>
#include <string_view>

namespace masking {

// What identifies a machine and can be told by its form alone.

/// Whether a text is an IPv4 address in its usual form.
bool isIpv4(std::string_view text);

/// The length of the UUID, MAC address, world-wide name, IPv4 or IPv6 address
/// that begins at a place of a text and ends at the end of a word; 0 if there
/// is none. Addresses that every machine has (0.0.0.0, 127.0.0.1, ::1) and
/// network masks are none.
std::size_t addressAt(std::string_view text, std::size_t place);

}  // namespace masking
