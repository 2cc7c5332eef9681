#pragma once

#include <curl/curl.h>

#include <string>

namespace http {

/// Which certificate a server must show, and which key it showed.
struct CertificateCheck {
  /// Of the key that was shown last ("sha256//BASE64", RFC 7469, 2.4).
  std::string pin;
  /// SHA-256 digest of the one certificate to trust; empty: any that the
  /// handle's own options trust.
  std::string trusted;
};

/// Sets up a handle that will use TLS: it stores the pin of the key that the
/// server shows, trusted or not, in `check`, and if `check.trusted` is set it
/// refuses every other certificate. `check` must outlive every connection that
/// the handle opens. Connections that resume a TLS session leave it
/// unchanged.
void installCertificateCheck(CURL* easy, CertificateCheck& check);

}  // namespace http
