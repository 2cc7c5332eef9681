#include "tests/bmc/wire/certificate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/bmc/wire/tls_context.h"

namespace bmc {
namespace {

using testing::StartsWith;

TEST(MakeCertificate, TlsTakesIt) {
  const Identity identity = makeCertificate({});
  EXPECT_THAT(identity.certificate, StartsWith("-----BEGIN CERTIFICATE-----"));
  std::string error;
  EXPECT_NE(makeTlsContext(identity, {}, error), nullptr) << error;
}

TEST(MakeCertificate, AuthoritySignsAnother) {
  CertificateSettings settings;
  settings.name = "authority";
  settings.authority = true;
  const Identity authority = makeCertificate(settings);
  const Identity leaf = makeCertificate({}, &authority);
  std::string error;
  EXPECT_NE(makeTlsContext({leaf.certificate + authority.certificate, leaf.key},
                           {}, error),
            nullptr)
      << error;
}

TEST(MakeTlsContext, KeyOfAnotherCertificateIsRefused) {
  std::string error;
  EXPECT_EQ(
      makeTlsContext({makeCertificate({}).certificate, makeCertificate({}).key},
                     {}, error),
      nullptr);
  EXPECT_FALSE(error.empty());
}

TEST(PinOf, DependsOnTheKey) {
  const std::string pin = pinOf(makeCertificate({}).certificate);
  EXPECT_THAT(pin, StartsWith("sha256//"));
  EXPECT_EQ(pin.size(), 8U + 44U);
  EXPECT_NE(pin, pinOf(makeCertificate({}).certificate));
}

TEST(PinOf, EmptyForWhatIsNoCertificate) { EXPECT_EQ(pinOf("text"), ""); }

}  // namespace
}  // namespace bmc
