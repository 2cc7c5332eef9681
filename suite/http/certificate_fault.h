#pragma once

#include <string>

#include "suite/base/failure.h"

namespace http {

/// Why a server's certificate is not trusted, the same for all TLS libraries.
enum class CertificateFault {
  kSelfSigned,
  kUnknownAuthority,
  kNotVouchedFor,  ///< Unknown to the authorities in a file, the `detail`.
  kExpired,
  kNotYetValid,
  kOtherName,
  kWrongPin,
  kFingerprintMismatch,  ///< Only one certificate is trusted, not this one.
  kRevoked,
  kWeak,
  kAuthorityFile,  ///< The file of trusted authorities cannot be read.
  kBadPin,         ///< The configured pin is malformed.
  kOther
};

/// Makes a fault more specific where a file of trusted authorities was named:
/// an unknown authority becomes `kNotVouchedFor`. `caFile` is empty if no file
/// was named.
CertificateFault withAuthorityFile(CertificateFault fault,
                                   const std::string& caFile);

/// The failure with cause and remedy; address and URI are left empty. `detail`
/// is the library's message, which only the less specific faults include. `pin`
/// is that of the key which the server showed ("sha256//BASE64"), included
/// where it helps; empty: unknown.
base::Failure failureOf(CertificateFault fault, const std::string& detail,
                        const std::string& pin = "");

}  // namespace http
