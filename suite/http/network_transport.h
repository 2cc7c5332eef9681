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
  /// Keys of which the server must have one: "sha256//BASE64", several
  /// separated by ";"; empty: any. A pin alone is trust enough: chain, name
  /// and validity are checked beside it only when `caFile` is given.
  std::string pin;
  /// Chain, name and validity of the certificate are not checked. A pin still
  /// is.
  bool insecure = false;
  /// SHA-256 digest, 32 bytes, of the one certificate that is trusted, whatever
  /// it says and whoever has signed it; a pin is checked beside it. Empty: as
  /// above. Not on Windows.
  std::string certificate;
};

/// A transport over HTTP and TLS 1.2 or newer: by libcurl, on Windows by
/// WinHTTP. Environment variables for proxies, stored credentials, cookies and
/// redirects have no say. The user's wish to end the run makes `next` return
/// once, empty-handed; later calls wait again, so that sessions can be closed.
std::unique_ptr<Transport> makeNetworkTransport(
    NetworkTransportOptions options);

/// The libraries in use that speak HTTP and TLS, with their versions ("libcurl
/// 7.88.1, OpenSSL 3.0.15"); or why there are none.
std::string networkLibraries();

}  // namespace http
