#include "suite/http/certificate_fault.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "suite/base/enum_table.h"
#include "suite/base/text.h"

namespace http {
namespace {

constexpr std::size_t kDetailBytes = 200;

// Where the pin of the key that the server showed goes, if it is known.
constexpr std::string_view kPlace = "%1";

constexpr char kTrustIt[] =
    "if this is the right server, trust its key with --pin%1, or its authority "
    "with --cacert";
constexpr char kCheckClock[] =
    "renew the certificate at the controller, and check this machine's clock";

struct CertificateMessage {
  CertificateFault fault;
  const char* cause;
  const char* remedy;
  bool withDetail;
};

// One row a fault, in the order of the enumeration.
// clang-format off
constexpr CertificateMessage kCertificateMessages[] = {
    {CertificateFault::kSelfSigned, "the certificate is self-signed", kTrustIt, false},
    {CertificateFault::kUnknownAuthority, "the certificate comes from an authority that is not trusted", kTrustIt, false},
    {CertificateFault::kNotVouchedFor, "no certificate in the file of trusted authorities vouches for the server's", "make sure that this is the right server, and name its authority with --cacert, or trust its key with --pin%1", true},
    {CertificateFault::kExpired, "the certificate has expired", kCheckClock, false},
    {CertificateFault::kNotYetValid, "the certificate is not valid yet", "check the clocks of the controller and of this machine", false},
    {CertificateFault::kOtherName, "the certificate is for another name", "use a name that stands in it, or trust its key with --pin%1", false},
    {CertificateFault::kWrongPin, "the server's key is not the pinned one%1", "make sure that this is the right server before the pin is changed", false},
    {CertificateFault::kFingerprintMismatch, "the certificate is not the one that the controller names over IPMI", "make sure that this is the right controller, and trust its key with --pin%1", false},
    {CertificateFault::kRevoked, "the certificate was revoked", "renew the certificate at the controller", false},
    {CertificateFault::kWeak, "the certificate's key or signature is too weak", "renew the certificate at the controller, or trust its key with --pin%1", true},
    {CertificateFault::kAuthorityFile, "the trusted authorities cannot be read", "check the file given with --cacert", true},
    {CertificateFault::kBadPin, "the pin is not of the form sha256//BASE64", "check --pin", false},
    {CertificateFault::kOther, "the certificate was refused", kTrustIt, true},
};
// clang-format on

static_assert(base::hasRowForEach(kCertificateMessages,
                                  &CertificateMessage::fault,
                                  CertificateFault::kOther));

const CertificateMessage& messageFor(CertificateFault fault) {
  return kCertificateMessages[static_cast<std::size_t>(fault)];
}

// A text with the argument in its place, or as it is if it has none.
std::string filled(std::string text, const std::string& argument) {
  const std::size_t place = text.find(kPlace);
  return place == std::string::npos
             ? text
             : text.replace(place, kPlace.size(), argument);
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
  const CertificateMessage& message = messageFor(fault);
  std::string cause = filled(message.cause, pin.empty() ? "" : " but " + pin);
  if (message.withDetail && !detail.empty()) {
    cause += " (" + base::excerpt(detail, kDetailBytes) + ')';
  }
  return {base::FailureKind::kCertificate, "", "", std::move(cause),
          filled(message.remedy, pin.empty() ? "" : ' ' + pin)};
}

}  // namespace http
