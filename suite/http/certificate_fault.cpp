#include "suite/http/certificate_fault.h"

#include <string_view>
#include <utility>

#include "suite/base/text.h"

namespace http {
namespace {

constexpr std::size_t kDetailBytes = 200;

constexpr std::string_view kPinOption = "--pin";
constexpr char kTrustIt[] =
    "if this is the right server, trust its key with --pin, or its authority "
    "with --cacert";
constexpr char kCheckClock[] =
    "renew the certificate at the controller, and check this machine's clock";

struct Words {
  const char* cause;
  const char* remedy;
  bool withDetail;
};

Words messageFor(CertificateFault fault) {
  switch (fault) {
    case CertificateFault::kSelfSigned:
      return {"the certificate is self-signed", kTrustIt, false};
    case CertificateFault::kUnknownAuthority:
      return {"the certificate comes from an authority that is not trusted",
              kTrustIt, false};
    case CertificateFault::kNotVouchedFor:
      return {
          "no certificate in the file of trusted authorities vouches for "
          "the server's",
          "make sure that this is the right server, and name its authority "
          "with --cacert, or trust its key with --pin",
          true};
    case CertificateFault::kExpired:
      return {"the certificate has expired", kCheckClock, false};
    case CertificateFault::kNotYetValid:
      return {"the certificate is not valid yet",
              "check the clocks of the controller and of this machine", false};
    case CertificateFault::kOtherName:
      return {"the certificate is for another name",
              "use a name that stands in it, or trust its key with --pin",
              false};
    case CertificateFault::kWrongPin:
      return {"the server's key is not the pinned one",
              "make sure that this is the right server before the pin is "
              "changed",
              false};
    case CertificateFault::kFingerprintMismatch:
      return {
          "the certificate is not the one that the controller names over "
          "IPMI",
          "make sure that this is the right controller, and trust its key "
          "with --pin",
          false};
    case CertificateFault::kRevoked:
      return {"the certificate was revoked",
              "renew the certificate at the controller", false};
    case CertificateFault::kWeak:
      return {"the certificate's key or signature is too weak",
              "renew the certificate at the controller, or trust its key with "
              "--pin",
              true};
    case CertificateFault::kAuthorityFile:
      return {"the trusted authorities cannot be read",
              "check the file given with --cacert", true};
    case CertificateFault::kBadPin:
      return {"the pin is not of the form sha256//BASE64", "check --pin",
              false};
    case CertificateFault::kOther:
      break;
  }
  return {"the certificate was refused", kTrustIt, true};
}

}  // namespace

CertificateFault withAuthorityFile(CertificateFault fault,
                                   const std::string& caFile) {
  const bool unknown = fault == CertificateFault::kSelfSigned ||
                       fault == CertificateFault::kUnknownAuthority;
  return unknown && !caFile.empty() ? CertificateFault::kNotVouchedFor : fault;
}

base::Failure failureOf(CertificateFault fault, const std::string& detail,
                        const std::string& pin) {
  const Words words = messageFor(fault);
  std::string cause = words.cause;
  if (words.withDetail && !detail.empty()) {
    cause += " (" + base::excerpt(detail, kDetailBytes) + ')';
  }
  std::string remedy = words.remedy;
  if (!pin.empty() && fault == CertificateFault::kWrongPin) {
    cause += " but " + pin;
  } else if (const std::size_t option = remedy.find(kPinOption);
             !pin.empty() && option != std::string::npos) {
    remedy.insert(option + kPinOption.size(), ' ' + pin);
  }
  return {base::FailureKind::kCertificate, "", "", std::move(cause),
          std::move(remedy)};
}

}  // namespace http
