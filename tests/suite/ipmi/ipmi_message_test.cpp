#include "suite/ipmi/ipmi_message.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace ipmi {
namespace {

using testing::ElementsAre;

IpmiResponse deviceId(char version) {
  IpmiResponse response;
  response.data = std::string(11, '\0');
  response.data[4] = version;
  return response;
}

TEST(IpmiVersion, ReadsSwappedDigits) {
  EXPECT_EQ(ipmiVersion(deviceId('\x02')), 20);
  EXPECT_EQ(ipmiVersion(deviceId('\x51')), 15);
}

TEST(IpmiVersion, FailureAndNonsenseHaveNone) {
  IpmiResponse failed = deviceId('\x02');
  failed.completion = 0xC1;
  EXPECT_FALSE(ipmiVersion(failed));
  EXPECT_FALSE(ipmiVersion({0, "\x20\x01\x02\x03"}));
  EXPECT_FALSE(ipmiVersion(deviceId('\0')));
  EXPECT_FALSE(ipmiVersion(deviceId('\xFF')));
}

TEST(GetDeviceIdRequest, IsTheStandardCommand) {
  const IpmiRequest request = getDeviceIdRequest();
  EXPECT_EQ(request.netFunction, 0x06);
  EXPECT_EQ(request.command, 0x01);
  EXPECT_TRUE(request.data.empty());
}

TEST(BootstrapRequest, KeepsBootstrappingEnabled) {
  const IpmiRequest request = bootstrapRequest();
  EXPECT_EQ(request.netFunction, 0x2C);
  EXPECT_EQ(request.command, 0x02);
  EXPECT_THAT(request.data, ElementsAre(0x52, 0xA5));
}

std::string padded(const std::string& text) {
  return text + std::string(16 - text.size(), '\0');
}

TEST(BootstrapAccount, ReadsPaddedTexts) {
  const auto account =
      bootstrapAccount({0, "\x52" + padded("host7") + padded("pa ss")});
  EXPECT_FALSE(account) << "a blank is no part of such a password";
  const auto good =
      bootstrapAccount({0, "\x52" + padded("host7") + padded("aB3$xyz")});
  ASSERT_TRUE(good);
  EXPECT_EQ(good->user, "host7");
  EXPECT_EQ(good->password, "aB3$xyz");
}

TEST(BootstrapAccount, FullFieldsNeedNoNul) {
  const auto account = bootstrapAccount(
      {0, "\x52" + std::string(16, 'u') + std::string(16, 'p')});
  ASSERT_TRUE(account);
  EXPECT_EQ(account->user, std::string(16, 'u'));
  EXPECT_EQ(account->password, std::string(16, 'p'));
}

TEST(BootstrapAccount, RefusalsAndNonsenseGiveNone) {
  const std::string good = "\x52" + padded("host7") + padded("secret");
  EXPECT_FALSE(bootstrapAccount({0x80, good}));
  EXPECT_FALSE(bootstrapAccount({0, good.substr(0, 32)}));
  EXPECT_FALSE(bootstrapAccount({0, "\x53" + good.substr(1)}));
  EXPECT_FALSE(bootstrapAccount({0, "\x52" + std::string(32, '\0')}));
  EXPECT_FALSE(
      bootstrapAccount({0, "\x52" + padded("a\nb") + padded("secret")}));
  EXPECT_FALSE(bootstrapAccount({0, ""}));
}

TEST(FingerprintRequest, AsksForTheFirstCertificate) {
  const IpmiRequest request = fingerprintRequest();
  EXPECT_EQ(request.netFunction, 0x2C);
  EXPECT_EQ(request.command, 0x01);
  EXPECT_THAT(request.data, ElementsAre(0x52, 1));
}

TEST(CertificateDigest, ReadsSha256) {
  const std::string digest(32, '\xAB');
  EXPECT_EQ(certificateDigest({0, "\x52\x01" + digest}), digest);
}

TEST(CertificateDigest, OtherAlgorithmsAndShortAnswersGiveNone) {
  EXPECT_FALSE(certificateDigest({0, "\x52\x02" + std::string(32, 'x')}));
  EXPECT_FALSE(certificateDigest({0, "\x52\x01" + std::string(31, 'x')}));
  EXPECT_FALSE(certificateDigest({0xC1, "\x52\x01" + std::string(32, 'x')}));
}

}  // namespace
}  // namespace ipmi
