#pragma once

#include <string>

#include "suite/base/failure.h"

namespace http {

/// Why a server's certificate is not trusted, whatever the library says.
enum class CertificateFault {
  kSelfSigned,
  kUnknownAuthority,
  kNotVouchedFor,  ///< Unknown to the authorities in a file, the `detail`.
  kExpired,
  kNotYetValid,
  kOtherName,
  kWrongPin,
  kFingerprintMismatch,  ///< One certificate is trusted, and this is another.
  kRevoked,
  kWeak,
  kAuthorityFile,  ///< Not the certificate: the file of trusted authorities.
  kBadPin,         ///< Not the certificate: the configured pin is none.
  kOther
};

/// The fault as a person who named a file of trusted authorities should be
/// told it: a certificate that nobody vouches for is one that no certificate
/// of that file vouches for. `caFile` is empty if no file was named.
CertificateFault withAuthorityFile(CertificateFault fault,
                                   const std::string& caFile);

/// The failure in words that a person can act on; address and URI are left
/// empty. `detail` is what the library says; it is told for the faults whose
/// own words do not say enough. `pin` is that of the key which the server
/// showed ("sha256//BASE64"), told where it helps; empty: unknown.
base::Failure failureOf(CertificateFault fault, const std::string& detail,
                        const std::string& pin = "");

}  // namespace http
