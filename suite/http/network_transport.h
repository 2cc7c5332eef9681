#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "suite/http/origin.h"
#include "suite/http/transport.h"

namespace http {

/// How a service is reached over the network, and what is trusted.
struct NetworkTransportOptions {
  Origin origin;
  /// Name resolution, TCP and TLS together.
  std::chrono::milliseconds connectTimeout{10000};
  int maxConnections = 4;  ///< At a time; at least 1.

  /// File of trusted authorities (PEM); empty: the system's.
  std::string caFile;
  /// Public keys that are trusted: "sha256//BASE64", several separated by ";";
  /// empty: any. The server must have one of them. With a pin, chain, name and
  /// validity are checked only if `caFile` is set, too.
  std::string pin;
  /// Do not check chain, name and validity of the certificate. A pin is
  /// checked all the same.
  bool insecure = false;
  /// SHA-256 digest, 32 bytes, of the only certificate that is trusted, whoever
  /// signed it; a pin is checked as well. Empty: as above. Ignored on
  /// Windows.
  std::string certificate;
};

/// A transport over HTTP and TLS 1.2 or newer: by libcurl, on Windows by
/// WinHTTP. Ignores environment variables for proxies, stored credentials and
/// cookies, and follows no redirect. If the user interrupts the run, `next`
/// returns nullopt once; later calls wait again, so that sessions can be
/// closed.
std::unique_ptr<Transport> makeNetworkTransport(
    NetworkTransportOptions options);

/// The libraries in use that speak HTTP and TLS, with their versions ("libcurl
/// 7.88.1, OpenSSL 3.0.15"); or why there are none.
std::string networkLibraries();

}  // namespace http
