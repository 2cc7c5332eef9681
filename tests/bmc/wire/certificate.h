#pragma once

#include <string>
#include <vector>

namespace bmc {

/// A certificate with its private key, both as PEM text.
struct Identity {
  std::string certificate;
  std::string key;
};

/// What a certificate says.
struct CertificateSettings {
  std::string name = "localhost";  ///< Common name of the subject.
  /// Subject alternative names in OpenSSL's form: "DNS:localhost".
  std::vector<std::string> alternativeNames{"DNS:localhost", "IP:127.0.0.1",
                                            "IP:::1"};
  long validFromSeconds = -3600;     ///< From now.
  long validToSeconds = 30 * 86400;  ///< From now.
  bool authority = false;            ///< May sign others.
};

/// Makes a certificate on a new P-256 key, which takes well below a
/// millisecond where an RSA key takes a tenth of a second. Signed by the
/// issuer, or by itself when there is none. Both texts are empty when OpenSSL
/// fails.
Identity makeCertificate(const CertificateSettings& settings,
                         const Identity* issuer = nullptr);

/// The pin of a certificate's public key: "sha256//" and the base64 form of
/// the SHA-256 of its SubjectPublicKeyInfo. Empty when the text is no
/// certificate.
std::string pinOf(const std::string& certificate);

}  // namespace bmc
