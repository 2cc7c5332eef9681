#include "suite/platform/user_paths.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/temp_folder.h"

namespace {

class UserPaths : public testing::Test {
 protected:
  UserPaths() {
    setenv("HOME", home_.path().string().c_str(), 1);
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("XDG_STATE_HOME");
  }

  support::TempFolder home_;
};

TEST_F(UserPaths, LogIsBelowTheHome) {
  EXPECT_EQ(platform::logFile(),
            home_.path().string() + "/.local/state/brivel/brivel.log");
}

TEST_F(UserPaths, LogIsWhereTheVariableSays) {
  setenv("XDG_STATE_HOME", "/var/state", 1);
  EXPECT_EQ(platform::logFile(), "/var/state/brivel/brivel.log");
}

TEST_F(UserPaths, RelativeVariablesCountAsUnset) {
  setenv("XDG_STATE_HOME", "state", 1);
  EXPECT_EQ(platform::logFile(),
            home_.path().string() + "/.local/state/brivel/brivel.log");
}

TEST_F(UserPaths, SettingsAreBelowTheHome) {
  const std::string file = home_.write(".config/brivel/brivel.toml", "");
  EXPECT_EQ(platform::settingsFile(), file);
}

TEST_F(UserPaths, SettingsAreWhereTheVariableSays) {
  home_.write(".config/brivel/brivel.toml", "");
  const std::string file = home_.write("other/brivel/brivel.toml", "");
  setenv("XDG_CONFIG_HOME", home_.at("other").c_str(), 1);
  EXPECT_EQ(platform::settingsFile(), file);
}

TEST_F(UserPaths, WithoutOwnSettingsTheSystemsCount) {
  const std::string file = platform::settingsFile();
  EXPECT_TRUE(file.empty() || file == "/etc/brivel/brivel.toml") << file;
}

TEST_F(UserPaths, RootIsNotLedToAnotherUsersFolder) {
  if (lchown(home_.path().c_str(), 1234, 1234) != 0) {
    GTEST_SKIP() << "only root can make folders of other users";
  }
  const std::string own = getpwuid(getuid())->pw_dir;
  EXPECT_EQ(platform::homeDirectory(), own);
  setenv("XDG_STATE_HOME", home_.at("not/there/yet").c_str(), 1);
  EXPECT_EQ(platform::logFile(), own + "/.local/state/brivel/brivel.log");
  setenv("XDG_CONFIG_HOME", home_.path().c_str(), 1);
  const std::string file = home_.write("brivel/brivel.toml", "insecure = true");
  EXPECT_NE(platform::settingsFile(), file);
}

TEST_F(UserPaths, HomeIsKnownWithoutTheVariable) {
  unsetenv("HOME");
  EXPECT_EQ(platform::homeDirectory(), getpwuid(getuid())->pw_dir);
}

}  // namespace
