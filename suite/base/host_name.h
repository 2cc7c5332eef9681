#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

/// Longest host name as text, in bytes (RFC 1035, 2.3.4).
constexpr std::size_t kLongestHostName = 253;

/// Whether a text is an IPv4 address in dotted decimals ("10.0.0.5").
bool isIpv4Address(std::string_view text);

/// Whether a text is an IPv6 address without brackets and zone (RFC 4291).
bool isIpv6Address(std::string_view text);

/// Whether a host, a name or an address that was checked before, is an IPv6
/// address, with a zone or without: it alone holds colons.
inline bool isIpv6Host(std::string_view host) {
  return host.find(':') != std::string_view::npos;
}

/// The same for an IPv6 address that holds on one link only (fe80::/10 as it
/// is assigned: fe80::/64, RFC 4291, 2.5.6).
bool isLinkLocal(std::string_view host);

/// Whether a text is a host name as they are met in practice, labels of
/// letters, digits, hyphens and underscores, or an IPv4 address. Digits and
/// dots alone must be an IPv4 address.
bool isHostName(std::string_view text);

/// A host as it stands before a port: an IPv6 address in brackets, anything
/// else as it is.
std::string bracketed(std::string_view host);

}  // namespace base
