#include "suite/connection/bootstrap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/suite/local/folder.h"

namespace connection {
namespace {

using base::Failure;
using base::FailureKind;
using testing::HasSubstr;
using testing::Not;

std::string padded(const std::string& text) {
  return text + std::string(16 - text.size(), '\0');
}

TEST(MadeAccount, TakesUserAndPassword) {
  const auto account = madeAccount(
      {0, "\x52" + padded("host7") + padded("aB3$xyz")}, "/dev/ipmi0");
  ASSERT_TRUE(account);
  EXPECT_EQ(account->user, "host7");
  EXPECT_EQ(account->credential.password.text(), "aB3$xyz");
  EXPECT_EQ(account->credential.origin, "the controller, over /dev/ipmi0");
}

TEST(MadeAccount, DisabledBootstrappingIsTold) {
  const Failure failure = madeAccount({0x80, ""}, "/dev/ipmi0").error();
  EXPECT_EQ(failure.kind, FailureKind::kNoBootstrapAccount);
  EXPECT_THAT(failure.cause, HasSubstr("disabled"));
  EXPECT_THAT(failure.remedy, HasSubstr("--user"));
}

TEST(MadeAccount, NonsenseIsToldWithoutItsContent) {
  const Failure failure =
      madeAccount({0, "\x52 a secret but too short"}, "/dev/ipmi0").error();
  EXPECT_EQ(failure.kind, FailureKind::kNoBootstrapAccount);
  EXPECT_THAT(failure.cause, Not(HasSubstr("secret")));
}

FoundController controller(bool bootstraps) {
  FoundController found;
  found.bootstrapsCredentials = bootstraps;
  return found;
}

TEST(BootstrapAccount, ControllerThatDoesNotIsNotAsked) {
  const local::Folder folder;
  const local::Machine machine(folder.root());
  const Failure failure = bootstrapAccount(machine, controller(false)).error();
  EXPECT_EQ(failure.kind, FailureKind::kNoBootstrapAccount);
}

TEST(BootstrapAccount, WithoutDeviceThereIsNone) {
  const local::Folder folder;
  const local::Machine machine(folder.root());
  const Failure failure = bootstrapAccount(machine, controller(true)).error();
  EXPECT_EQ(failure.kind, FailureKind::kIpmiDevice);
  EXPECT_THAT(failure.cause, HasSubstr("/dev/ipmi0"));
}

}  // namespace
}  // namespace connection
