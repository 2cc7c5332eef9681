#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "suite/base/result.h"
#include "suite/http/origin.h"

namespace connection {

/// Where a target is.
struct Address {
  enum class Scheme {
    kHttps,     ///< A management controller.
    kHttp,      ///< The same without encryption: tests, host interfaces.
    kDirectory  ///< A recorded server in a directory.
  };
  Scheme scheme = Scheme::kHttps;
  std::string user;        ///< Empty: none given.
  std::string host;        ///< Name, IPv4 address, or IPv6 address without
                           ///< brackets; a zone follows after "%".
  std::uint16_t port = 0;  ///< 0: the protocol's own.
  std::string directory;   ///< Of a recorded server; empty otherwise.
};

/// Reads "[https://][user@]host[:port]", "http://..." or "file:DIR"; IPv6
/// addresses stand in brackets, and a path "/" or "/redfish/v1" at the end is
/// ignored. Returns a failure of kind `kUsage` if the text is none of these;
/// its cause is a clause that repeats the text, unless a password may be in
/// it. Passwords ("user:password@host") are refused, because every user of a
/// machine sees the command lines of all others.
base::Result<Address> parseAddress(std::string_view text);

/// Whether a host is this machine: "localhost", 127.0.0.0/8, ::1.
bool isLoopback(const Address& address);

/// The address of a controller as a transport takes it.
http::Origin originOf(const Address& address);

/// The address as text, without user: "10.0.0.5:443", "file:DIR".
std::string toString(const Address& address);

}  // namespace connection
