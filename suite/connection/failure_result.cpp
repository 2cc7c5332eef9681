#include "suite/connection/failure_result.h"

#include "syshealth/result/result_codes.h"

namespace connection {

int resultOf(base::FailureKind kind) {
  using Kind = base::FailureKind;
  // clang-format off
  switch (kind) {
    case Kind::kNameNotResolved:  return kResultConnectionFailed;
    case Kind::kUnreachable:      return kResultConnectionFailed;
    case Kind::kConnectTimeout:   return kResultTimeout;
    case Kind::kReadTimeout:      return kResultTimeout;
    case Kind::kDeadline:         return kResultTimeout;
    case Kind::kCertificate:      return kResultCertificateNotVerified;
    case Kind::kTls:              return kResultConnectionFailed;
    case Kind::kAuthentication:   return kResultAuthenticationFailed;
    case Kind::kForbidden:        return kResultAuthenticationFailed;
    case Kind::kPasswordChange:   return kResultAuthenticationFailed;
    case Kind::kNoCredentials:    return kResultCredentialNotFound;
    case Kind::kCredentialMissing: return kResultCredentialFileMissing;
    case Kind::kBusy:             return kResultBmcInternalError;
    case Kind::kServerError:      return kResultBmcInternalError;
    case Kind::kNotRedfish:       return kResultConnectionFailed;
    case Kind::kNoSystem:         return kResultSuccess;
    case Kind::kNotFound:         return kResultConnectionFailed;
    case Kind::kBadContent:       return kResultBmcInternalError;
    case Kind::kRefusedLink:      return kResultBmcInternalError;
    case Kind::kDirectoryMissing: return kResultLocalFileMissing;
    case Kind::kFileUnreadable:   return kResultReadFileFailed;
    case Kind::kNoHostInterface:  return kResultLanOverUsbNotDetected;
    case Kind::kNoHostAddress:    return kResultUsbLanUnavailable;
    case Kind::kNotPermitted:     return kResultRootRequired;
    case Kind::kNoBootstrapAccount: return kResultKcsAccountFailed;
    case Kind::kIpmiDevice:       return kResultKcsConnectionFailed;
    case Kind::kUsage:            return kResultInvalidParameter;
    case Kind::kInterrupted:      return kResultInterrupted;
    case Kind::kInternal:         return kResultInternalError;
  }
  // clang-format on
  return kResultInternalError;
}

}  // namespace connection
