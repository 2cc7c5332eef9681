#include "suite/devhealth/failure_status.h"

#include "syshealth/result/health_status.h"

namespace devhealth {

int statusOf(base::FailureKind kind, Phase phase) {
  using Kind = base::FailureKind;
  const int late =
      phase == Phase::kConnecting ? kHealthNoConnection : kHealthReadFailed;
  // clang-format off
  switch (kind) {
    case Kind::kNameNotResolved:   return kHealthNoConnection;
    case Kind::kUnreachable:       return kHealthNoConnection;
    case Kind::kConnectTimeout:    return late;
    case Kind::kReadTimeout:       return late;
    case Kind::kDeadline:          return late;
    case Kind::kCertificate:       return kHealthNoConnection;
    case Kind::kTls:               return kHealthNoConnection;
    case Kind::kAuthentication:    return kHealthRefused;
    case Kind::kForbidden:         return kHealthRefused;
    case Kind::kPasswordChange:    return kHealthRefused;
    case Kind::kNoCredentials:     return kHealthRefused;
    case Kind::kCredentialMissing: return kHealthRefused;
    case Kind::kBusy:              return kHealthRefused;
    case Kind::kServerError:       return kStatusInternal;
    case Kind::kNotRedfish:        return kHealthNotSupported;
    case Kind::kNoSystem:          return kHealthNotSupported;
    case Kind::kNotFound:          return kHealthNotSupported;
    case Kind::kBadContent:        return kHealthReadFailed;
    case Kind::kRefusedLink:       return kHealthReadFailed;
    case Kind::kDirectoryMissing:  return kHealthNoConnection;
    case Kind::kFileUnreadable:    return kHealthReadFailed;
    case Kind::kNoHostInterface:   return kHealthNoConnection;
    case Kind::kNoHostAddress:     return kHealthNoConnection;
    case Kind::kNotPermitted:      return kHealthNotSupported;
    case Kind::kNoBootstrapAccount: return kHealthRefused;
    case Kind::kIpmiDevice:        return kHealthRefused;
    case Kind::kUsage:             return kStatusInternal;
    case Kind::kInterrupted:       return kStatusInternal;
    case Kind::kInternal:          return kStatusInternal;
  }
  // clang-format on
  return kStatusInternal;
}

}  // namespace devhealth
