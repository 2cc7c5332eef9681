#pragma once

#include <curl/curl.h>

#include <string>

namespace http {

/// What is asked of the certificate that a server shows, and what it showed.
struct CertificateCheck {
  /// Of the key that was shown last ("sha256//BASE64", RFC 7469, 2.4).
  std::string pin;
  /// SHA-256 digest of the one certificate to trust; empty: any that the
  /// handle's own options trust.
  std::string trusted;
};

/// Makes a handle that is about to ask over TLS note the pin of the key that
/// the server shows, whether it is trusted or not, and refuse every
/// certificate but the one that is to be trusted, if there is one. `check` has
/// to outlive every connection that the handle opens. Left as it is where a
/// connection takes up an earlier one's TLS session.
void installCertificateCheck(CURL* easy, CertificateCheck& check);

}  // namespace http
