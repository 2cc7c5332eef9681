#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace http {

/// Where a service is reached over the network.
struct Origin {
  /// Name, IPv4 address, or IPv6 address without brackets, whose zone follows
  /// as it is written on the command line: "fe80::1%eth0".
  std::string host;
  std::uint16_t port = 0;  ///< 0: the default of the scheme.
  bool plainHttp = false;
};

/// The origin as text: "10.0.0.5:443", "[fe80::1%eth0]:443". Clean text.
std::string addressOf(const Origin& origin);

/// The start of every URL: "https://10.0.0.5:443",
/// "https://[fe80::1%25eth0]:443" (RFC 6874). Returns nullopt if the host is
/// neither a name nor an address.
std::optional<std::string> urlOf(const Origin& origin);

}  // namespace http
