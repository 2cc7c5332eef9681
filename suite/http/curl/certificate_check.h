#pragma once

#include <openssl/ssl.h>

#include <string>

namespace http {

/// Which certificate a server must show, and which key it showed.
struct CertificateCheck {
  /// Of the key that was shown last ("sha256//BASE64", RFC 7469, 2.4).
  std::string pin;
  /// SHA-256 digest of the one certificate to trust; empty: any that the
  /// context's own settings trust.
  std::string trusted;
};

/// Makes the connections of a context store the pin of the key that the server
/// shows, trusted or not, in `check`, and, if `check.trusted` is set, refuse
/// every other certificate. `check` outlives them. Those that resume a TLS
/// session leave it unchanged.
void checkCertificates(SSL_CTX* context, CertificateCheck& check);

}  // namespace http
