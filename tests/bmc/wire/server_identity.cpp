#include "tests/bmc/wire/server_identity.h"

namespace bmc {
namespace {

constexpr long kDay = 86400;

Identity makeAuthority(const char* name) {
  CertificateSettings settings;
  settings.name = name;
  settings.alternativeNames.clear();
  settings.authority = true;
  return makeCertificate(settings);
}

ServerIdentity selfSigned(const CertificateSettings& settings) {
  const Identity identity = makeCertificate(settings);
  return {identity, identity.certificate};
}

ServerIdentity signedBy(const Identity& authority, const Identity& trusted) {
  Identity identity = makeCertificate({}, &authority);
  identity.certificate += authority.certificate;
  return {identity, trusted.certificate};
}

}  // namespace

ServerIdentity makeServerIdentity(CertificateKind kind) {
  CertificateSettings settings;
  switch (kind) {
    case CertificateKind::kSelfSigned:
      break;
    case CertificateKind::kExpired:
      settings.validFromSeconds = -30 * kDay;
      settings.validToSeconds = -kDay;
      break;
    case CertificateKind::kNotYet:
      settings.validFromSeconds = kDay;
      break;
    case CertificateKind::kOtherName:
      settings.name = "controller.example";
      settings.alternativeNames = {"DNS:controller.example"};
      break;
    case CertificateKind::kAuthority: {
      const Identity authority = makeAuthority("Authority");
      return signedBy(authority, authority);
    }
    case CertificateKind::kUntrusted:
      return signedBy(makeAuthority("Unheard-of Authority"),
                      makeAuthority("Authority"));
  }
  return selfSigned(settings);
}

}  // namespace bmc
