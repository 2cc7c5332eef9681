#pragma once

#include <string>

#include "tests/bmc/wire/certificate.h"

namespace bmc {

/// What may be the matter with a controller's certificate.
enum class CertificateKind {
  kSelfSigned,  ///< Good, once it is trusted itself.
  kExpired,     ///< Self-signed, and its time is over.
  kNotYet,      ///< Self-signed, and its time is to come.
  kOtherName,   ///< Self-signed, for another host.
  kAuthority,   ///< Good, once the authority that signed it is trusted.
  kUntrusted    ///< Signed by an authority that nobody is told of.
};

/// What is different about TLS.
struct TlsFaults {
  CertificateKind certificate = CertificateKind::kSelfSigned;
  int maxVersion = 0;      ///< As OpenSSL numbers versions; 0: the newest.
  bool resumption = true;  ///< Sessions can be taken up again.
};

/// A controller's certificate, and what its clients are told to trust.
struct ServerIdentity {
  Identity identity;  ///< The chain, its own certificate first.
  std::string trust;  ///< PEM text for a client's list of authorities.
};

ServerIdentity makeServerIdentity(CertificateKind kind);

}  // namespace bmc
