#include "suite/devhealth/failure_status.h"

namespace devhealth {

int statusOf(base::FailureKind kind, Moment moment) {
  using Kind = base::FailureKind;
  const int late =
      moment == Moment::kConnecting ? kStatusNoConnection : kStatusUnreadable;
  // clang-format off
  switch (kind) {
    case Kind::kNameNotResolved:   return kStatusNoConnection;
    case Kind::kUnreachable:       return kStatusNoConnection;
    case Kind::kConnectTimeout:    return late;
    case Kind::kReadTimeout:       return late;
    case Kind::kDeadline:          return late;
    case Kind::kCertificate:       return kStatusNoConnection;
    case Kind::kTls:               return kStatusNoConnection;
    case Kind::kAuthentication:    return kStatusRefused;
    case Kind::kForbidden:         return kStatusRefused;
    case Kind::kPasswordChange:    return kStatusRefused;
    case Kind::kNoCredentials:     return kStatusRefused;
    case Kind::kCredentialMissing: return kStatusRefused;
    case Kind::kBusy:              return kStatusRefused;
    case Kind::kServerError:       return kStatusInternal;
    case Kind::kNotRedfish:        return kStatusNotSupported;
    case Kind::kNoSystem:          return kStatusNotSupported;
    case Kind::kNotFound:          return kStatusNotSupported;
    case Kind::kBadContent:        return kStatusUnreadable;
    case Kind::kRefusedLink:       return kStatusUnreadable;
    case Kind::kDirectoryMissing:  return kStatusNoConnection;
    case Kind::kFileUnreadable:    return kStatusUnreadable;
    case Kind::kNoHostInterface:   return kStatusNoConnection;
    case Kind::kNoHostAddress:     return kStatusNoConnection;
    case Kind::kNotPermitted:      return kStatusNotSupported;
    case Kind::kNoBootstrapAccount: return kStatusRefused;
    case Kind::kIpmiDevice:        return kStatusRefused;
    case Kind::kInterrupted:       return kStatusInternal;
    case Kind::kInternal:          return kStatusInternal;
  }
  // clang-format on
  return kStatusInternal;
}

}  // namespace devhealth
