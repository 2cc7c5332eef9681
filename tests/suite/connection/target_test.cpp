#include "suite/connection/settings/target.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

namespace {

using connection::Address;
using connection::NamedTarget;
using connection::resolveTarget;
using connection::Settings;
using connection::Target;
using connection::TargetChoice;
using connection::TargetSettings;

class ResolveTarget : public testing::Test {
 protected:
  void name(const std::string& target, const std::string& address,
            const TargetSettings& own = {}) {
    settings_.targets[target] = NamedTarget{parsed(address), own};
  }

  static Address parsed(const std::string& text) {
    return connection::parseAddress(text).value();
  }

  Target resolved(const std::string& text) {
    choice_.text = text;
    const auto target = resolveTarget(choice_, settings_);
    EXPECT_TRUE(target) << base::describe(target.error());
    EXPECT_TRUE(target && *target);
    return target && *target ? **target : Target();
  }

  std::string errorOf(const std::string& text) {
    choice_.text = text;
    const auto target = resolveTarget(choice_, settings_);
    EXPECT_FALSE(target);
    return target.error().cause;
  }

  TargetChoice choice_;
  Settings settings_;
};

TEST_F(ResolveTarget, AddressAloneHasTheBuiltInLimits) {
  const Target target = resolved("admin@10.0.0.5");
  EXPECT_EQ(target.address.host, "10.0.0.5");
  EXPECT_EQ(target.user, "admin");
  EXPECT_FALSE(target.insecure);
  EXPECT_FALSE(target.thorough);
  EXPECT_EQ(target.timeout, std::chrono::seconds(30));
  EXPECT_EQ(target.deadline, std::chrono::seconds(120));
  EXPECT_EQ(target.maxConnections, 4);
}

TEST_F(ResolveTarget, NameFromTheSettingsGoesBeforeAHost) {
  name("bmc", "https://10.0.0.9");
  EXPECT_EQ(resolved("bmc").address.host, "10.0.0.9");
}

TEST_F(ResolveTarget, UnknownNameIsAHost) {
  name("bmc", "https://10.0.0.9");
  EXPECT_EQ(resolved("bmc2").address.host, "bmc2");
}

TEST_F(ResolveTarget, OptionsGoBeforeTheTargetsTableAndThatBeforeDefaults) {
  TargetSettings own;
  own.maxConnections = 2;
  own.timeout = std::chrono::seconds(2);
  name("bmc", "10.0.0.9", own);
  settings_.defaults.maxConnections = 3;
  settings_.defaults.timeout = std::chrono::seconds(3);
  settings_.defaults.deadline = std::chrono::seconds(33);
  choice_.given.maxConnections = 1;
  const Target target = resolved("bmc");
  EXPECT_EQ(target.maxConnections, 1);
  EXPECT_EQ(target.timeout, std::chrono::seconds(2));
  EXPECT_EQ(target.deadline, std::chrono::seconds(33));
}

TEST_F(ResolveTarget, UserOptionGoesBeforeTheSettings) {
  TargetSettings own;
  own.user = "table";
  name("bmc", "address@10.0.0.9", own);
  settings_.defaults.user = "default";
  choice_.given.user = "option";
  EXPECT_EQ(resolved("bmc").user, "option");
}

TEST_F(ResolveTarget, UserOfTheTableGoesBeforeTheOneInItsAddress) {
  TargetSettings own;
  own.user = "table";
  name("bmc", "address@10.0.0.9", own);
  EXPECT_EQ(resolved("bmc").user, "table");
}

TEST_F(ResolveTarget, UserInTheAddressGoesBeforeTheDefault) {
  settings_.defaults.user = "default";
  EXPECT_EQ(resolved("address@10.0.0.9").user, "address");
  EXPECT_EQ(resolved("10.0.0.9").user, "default");
}

TEST_F(ResolveTarget, TwoUsersOnTheCommandLineAreRefused) {
  choice_.given.user = "option";
  EXPECT_EQ(errorOf("address@10.0.0.9"),
            "two users are given: 'address' in the address, and 'option' by "
            "--user");
}

TEST_F(ResolveTarget, TheSameUserTwiceIsNoTrouble) {
  choice_.given.user = "admin";
  EXPECT_EQ(resolved("admin@10.0.0.9").user, "admin");
}

TEST_F(ResolveTarget, PasswordFileOfTheTableGoesBeforeTheDefault) {
  TargetSettings own;
  own.user = "admin";
  own.passwordFile = "/own";
  name("bmc", "10.0.0.9", own);
  settings_.defaults.passwordFile = "/default";
  EXPECT_EQ(resolved("bmc").password.settingsFile, "/own");
}

TEST_F(ResolveTarget, PasswordFileIsNotUsedForAnotherUser) {
  settings_.defaults.user = "admin";
  settings_.defaults.passwordFile = "/default";
  EXPECT_EQ(resolved("10.0.0.9").password.settingsFile, "/default");
  EXPECT_EQ(resolved("root@10.0.0.9").password.settingsFile, "");
}

TEST_F(ResolveTarget, PasswordFileWithoutAUserServesAll) {
  settings_.defaults.passwordFile = "/default";
  EXPECT_EQ(resolved("root@10.0.0.9").password.settingsFile, "/default");
}

TEST_F(ResolveTarget, PasswordFileOptionIsKeptApart) {
  settings_.defaults.passwordFile = "/default";
  choice_.given.passwordFile = "/option";
  const Target target = resolved("root@10.0.0.9");
  EXPECT_EQ(target.password.optionFile, "/option");
  EXPECT_EQ(target.password.settingsFile, "/default");
}

TEST_F(ResolveTarget, PasswordWithoutAUserIsRefused) {
  choice_.passwordFromStdin = true;
  EXPECT_EQ(errorOf("10.0.0.9"),
            "a password is given, but no user; add --user NAME");
}

TEST_F(ResolveTarget, RecordedServerNeedsNoUser) {
  choice_.passwordFromStdin = true;
  EXPECT_EQ(resolved("file:/srv/lab").address.directory, "/srv/lab");
}

TEST_F(ResolveTarget, PlainHttpServesThisMachine) {
  EXPECT_EQ(resolved("http://admin@127.0.0.1:8000").user, "admin");
}

TEST_F(ResolveTarget, PlainHttpElsewhereNeedsTheSetting) {
  EXPECT_NE(errorOf("http://10.0.0.9").find("plain-http = true"),
            std::string::npos);
  settings_.defaults.plainHttp = true;
  EXPECT_EQ(resolved("http://10.0.0.9").address.host, "10.0.0.9");
}

TEST_F(ResolveTarget, PlainHttpElsewhereCarriesNoPassword) {
  settings_.defaults.plainHttp = true;
  EXPECT_NE(errorOf("http://admin@10.0.0.9").find("no password is sent"),
            std::string::npos);
}

TEST_F(ResolveTarget, ThisMachineIsTheInbandSource) {
  TargetSettings own;
  own.user = "host";
  settings_.inband.source = parsed("169.254.0.17");
  settings_.inband.settings = own;
  const Target target = resolved("");
  EXPECT_EQ(target.address.host, "169.254.0.17");
  EXPECT_EQ(target.user, "host");
}

TEST_F(ResolveTarget, ThisMachineWithoutASourceIsNoError) {
  const auto target = resolveTarget(choice_, settings_);
  ASSERT_TRUE(target) << base::describe(target.error());
  EXPECT_FALSE(*target);
}

TEST_F(ResolveTarget, WrongAddressIsAnError) {
  EXPECT_NE(errorOf("fe80::1"), "");
}

TEST(NameThatIsNoTarget, IsToldWithTheTargetsThatThereAre) {
  connection::Settings settings;
  settings.file = "a.toml";
  settings.targets["node-1"] = {};
  settings.targets["node-2"] = {};
  connection::TargetChoice choice;
  choice.text = "nodde-1";
  const std::optional<Target> target =
      connection::resolveTarget(choice, settings).value();
  ASSERT_TRUE(target);
  EXPECT_EQ(target->notNamed,
            "'nodde-1' is no target in a.toml (node-1, node-2)");
  EXPECT_EQ(target->similarName, "node-1");
  settings.targets.clear();
  EXPECT_EQ(connection::resolveTarget(choice, settings).value()->notNamed, "");
}

}  // namespace
