#include "suite/connection/settings/settings.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "tests/support/temp_folder.h"

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>

#include <thread>
#endif

namespace {

using connection::loadSettings;
using connection::NamedTarget;
using connection::overlay;
using connection::Settings;
using connection::TargetSettings;

class LoadSettings : public testing::Test {
 protected:
  std::optional<Settings> load(const std::string& text) {
    file_ = directory_.write("brivel.toml", text);
    return loadFrom(file_, "/home/ada");
  }

  // The settings of a file; nullopt, and `error_` set, if it is refused.
  std::optional<Settings> loadFrom(const std::string& file,
                                   const std::string& home = "") {
    base::Result<Settings> settings = loadSettings(file, home);
    if (!settings) {
      error_ = settings.error().cause;
      return std::nullopt;
    }
    return *std::move(settings);
  }

  // A path as a setting gives it: Windows adds the drive of the file.
  std::string absolute(const std::string& path) const {
    return std::filesystem::path(file_).root_name().string() + path;
  }

  // The error of a file that is refused, without the file's name.
  std::string errorOf(const std::string& text) {
    EXPECT_FALSE(load(text));
    EXPECT_EQ(error_.rfind(file_ + ":", 0), 0U) << error_;
    return error_.substr(std::min(file_.size() + 1, error_.size()));
  }

  support::TempFolder directory_;
  std::string file_;
  std::string error_;
};

TEST_F(LoadSettings, EmptyFileSaysNothing) {
  const auto settings = load("");
  ASSERT_TRUE(settings) << error_;
  EXPECT_EQ(settings->file, file_);
  EXPECT_FALSE(settings->defaults.user);
  EXPECT_FALSE(settings->inband.source);
  EXPECT_TRUE(settings->targets.empty());
}

TEST_F(LoadSettings, DefaultsAreRead) {
  const std::string pin = "sha256//" + std::string(43, 'x') + "=";
  const auto settings = load(
      "[defaults]\n"
      "user = 'admin'\n"
      "password-file = '/etc/brivel/secret'\n"
      "cacert = '/etc/brivel/ca.pem'\n"
      "pin = '" +
      pin +
      "'\n"
      "insecure = true\n"
      "plain-http = false\n"
      "timeout = 2.5\n"
      "deadline = 60\n"
      "max-connections = 8\n"
      "ipmi-port = 6230\n"
      "thorough = true\n"
      "log-file = '/var/log/brivel.log'\n"
      "log-level = 4\n");
  ASSERT_TRUE(settings) << error_;
  const TargetSettings& defaults = settings->defaults;
  EXPECT_EQ(defaults.user, "admin");
  EXPECT_EQ(defaults.passwordFile, absolute("/etc/brivel/secret"));
  EXPECT_EQ(defaults.caFile, absolute("/etc/brivel/ca.pem"));
  EXPECT_EQ(defaults.pin, pin);
  EXPECT_EQ(defaults.insecure, true);
  EXPECT_EQ(defaults.plainHttp, false);
  EXPECT_EQ(defaults.timeout, std::chrono::milliseconds(2500));
  EXPECT_EQ(defaults.deadline, std::chrono::seconds(60));
  EXPECT_EQ(defaults.maxConnections, 8);
  EXPECT_EQ(defaults.ipmiPort, 6230);
  EXPECT_EQ(defaults.thorough, true);
  EXPECT_EQ(settings->logFile, absolute("/var/log/brivel.log"));
  EXPECT_EQ(settings->logLevel, 4);
}

TEST_F(LoadSettings, TargetsAreRead) {
  const auto settings = load(
      "[targets.rack1-n3]\n"
      "address = 'admin@10.0.0.5'\n"
      "insecure = true\n"
      "[targets.lab]\n"
      "address = 'file:/srv/lab'\n");
  ASSERT_TRUE(settings) << error_;
  ASSERT_EQ(settings->targets.size(), 2U);
  const NamedTarget& target = settings->targets.at("rack1-n3");
  EXPECT_EQ(target.address.host, "10.0.0.5");
  EXPECT_EQ(target.address.user, "admin");
  EXPECT_EQ(target.settings.insecure, true);
  EXPECT_EQ(settings->targets.at("lab").address.directory,
            absolute("/srv/lab"));
}

TEST_F(LoadSettings, InbandSourceIsAnAddress) {
  const auto settings = load("[inband]\nsource = 'file:/srv/lab'\n");
  ASSERT_TRUE(settings) << error_;
  ASSERT_TRUE(settings->inband.source);
  EXPECT_EQ(settings->inband.source->directory, absolute("/srv/lab"));
}

TEST_F(LoadSettings, InbandSourceMayBeANamedTarget) {
  const auto settings = load(
      "[inband]\nsource = 'self'\ntimeout = 5\n"
      "[targets.self]\naddress = '169.254.0.17'\nuser = 'host'\ntimeout = 9\n");
  ASSERT_TRUE(settings) << error_;
  ASSERT_TRUE(settings->inband.source);
  EXPECT_EQ(settings->inband.source->host, "169.254.0.17");
  EXPECT_EQ(settings->inband.settings.user, "host");
  EXPECT_EQ(settings->inband.settings.timeout, std::chrono::seconds(5));
}

TEST_F(LoadSettings, PathsAreRelativeToTheFileOrTheHome) {
  const auto settings = load(
      "[defaults]\n"
      "password-file = 'secret'\n"
      "cacert = '~/ca.pem'\n"
      "[targets.lab]\n"
      "address = 'file:lab'\n"
      "[inband]\n"
      "source = 'file:~/lab'\n");
  ASSERT_TRUE(settings) << error_;
  EXPECT_EQ(settings->defaults.passwordFile, directory_.at("secret"));
  EXPECT_EQ(settings->defaults.caFile, "/home/ada/ca.pem");
  EXPECT_EQ(settings->targets.at("lab").address.directory,
            directory_.at("lab"));
  EXPECT_EQ(settings->inband.source->directory, "/home/ada/lab");
}

TEST_F(LoadSettings, UnknownKeyIsNamedWithItsLine) {
  const std::string error = errorOf("[defaults]\nuser = 'a'\nusr = 'b'\n");
  EXPECT_EQ(
      error.rfind("3: unknown key 'usr' in [defaults]; known are user, ", 0),
      0U)
      << error;
}

TEST_F(LoadSettings, UnknownKeyOfATargetIsNamed) {
  EXPECT_EQ(errorOf("[targets.a]\naddress = 'b'\nlog-level = 3\n")
                .rfind("3: unknown key 'log-level' in [targets.a]", 0),
            0U);
}

TEST_F(LoadSettings, UnknownTableIsNamed) {
  EXPECT_EQ(errorOf("\n[default]\nuser = 'a'\n")
                .rfind("2: unknown table or key 'default'", 0),
            0U);
}

TEST_F(LoadSettings, WrongTypesAreNamedWithTheirLine) {
  EXPECT_EQ(errorOf("[defaults]\ninsecure = 'yes'\n"),
            "2: 'insecure' in [defaults] must be true or false");
  EXPECT_EQ(errorOf("[defaults]\nuser = 5\n"),
            "2: 'user' in [defaults] must be a text in quotation marks, and "
            "not empty");
  EXPECT_EQ(errorOf("[defaults]\nmax-connections = 4.0\n"),
            "2: 'max-connections' in [defaults] must be a whole number from 1 "
            "to 16");
  EXPECT_EQ(errorOf("[defaults]\ntimeout = '30'\n"),
            "2: 'timeout' in [defaults] must be a number of seconds, more than "
            "0, at most 86400");
}

TEST_F(LoadSettings, ValuesBeyondTheLimitsAreRefused) {
  errorOf("[defaults]\nmax-connections = 0\n");
  errorOf("[defaults]\nmax-connections = 17\n");
  errorOf("[defaults]\nlog-level = 5\n");
  errorOf("[defaults]\nlog-level = -1\n");
  errorOf("[defaults]\ntimeout = 0\n");
  errorOf("[defaults]\ntimeout = nan\n");
  errorOf("[defaults]\nuser = ''\n");
  errorOf("[defaults]\npin = 'sha256//short'\n");
}

TEST_F(LoadSettings, PasswordIsShownItsPlaceAndNotRepeated) {
  const std::string error = errorOf("[defaults]\npassword = 'hunter2'\n");
  EXPECT_EQ(error.rfind("2: 'password' in [defaults] does not belong here", 0),
            0U)
      << error;
  EXPECT_EQ(error.find("hunter2"), std::string::npos);
}

TEST_F(LoadSettings, PasswordInAnAddressIsNotRepeated) {
  const std::string error =
      errorOf("[targets.a]\naddress = 'admin:hunter2@b'\n");
  EXPECT_EQ(error.rfind("2: 'address' in [targets.a] is no address: ", 0), 0U);
  EXPECT_EQ(error.find("hunter2"), std::string::npos);
}

TEST_F(LoadSettings, TargetWithoutAddressIsRefused) {
  EXPECT_EQ(errorOf("[targets.a]\nuser = 'b'\n"),
            "1: [targets.a] has no "
            "address");
}

TEST_F(LoadSettings, InbandNeedsNoSource) {
  const auto settings = load(
      "[inband]\nuser = 'b'\nbootstrap-credentials = true\n"
      "pci-ids = 'names/pci.ids'\n");
  ASSERT_TRUE(settings) << error_;
  EXPECT_FALSE(settings->inband.source);
  EXPECT_EQ(settings->inband.settings.user, "b");
  EXPECT_TRUE(settings->inband.bootstrapCredentials);
  EXPECT_EQ(settings->inband.pciIdsFile, directory_.at("names/pci.ids"));
}

TEST_F(LoadSettings, AccountsAreNotMadeUnlessAskedFor) {
  const auto settings = load("[inband]\nuser = 'b'\n");
  ASSERT_TRUE(settings) << error_;
  EXPECT_FALSE(settings->inband.bootstrapCredentials);
}

TEST_F(LoadSettings, TablesMustBeTables) {
  EXPECT_EQ(errorOf("defaults = 3\n"),
            "1: 'defaults' must be a table: [defaults]");
  EXPECT_EQ(errorOf("targets = []\n"),
            "1: 'targets' must be a table: [targets]");
  EXPECT_EQ(errorOf("[targets]\na = 'b'\n"),
            "2: 'targets.a' must be a table: [targets.a]");
}

TEST_F(LoadSettings, BrokenSyntaxIsNamedWithItsLine) {
  EXPECT_EQ(errorOf("[defaults]\nuser = 'a\n").rfind("2: ", 0), 0U);
}

TEST_F(LoadSettings, BytesThatAreNoUtf8AreRefused) {
  errorOf("[defaults]\nuser = '\xFF'\n");
}

TEST_F(LoadSettings, MissingFileIsNamed) {
  const std::string file = directory_.at("none.toml");
  EXPECT_FALSE(loadFrom(file));
#ifdef _WIN32
  EXPECT_EQ(error_, file + ": " + std::system_category().message(2));
#else
  EXPECT_EQ(error_, file + ": No such file or directory");
#endif
}

TEST_F(LoadSettings, DirectoryIsRefused) {
  EXPECT_FALSE(loadFrom(directory_.path().string()));
  EXPECT_EQ(error_, directory_.path().string() + ": is a directory");
}

TEST_F(LoadSettings, HugeFileIsRefused) {
  EXPECT_FALSE(load("#" + std::string(1U << 20U, ' ')));
  EXPECT_EQ(error_, file_ + ": is larger than 1 MiB");
}

TEST_F(LoadSettings, KeysOfManyPartsAreRefused) {
  std::string dots;
  for (int i = 0; i < 100000; ++i) {
    dots += "a.";
  }
  EXPECT_EQ(errorOf("# " + dots + "\n" + dots + "b = 1\n"),
            "2: a line holds more than 64 dots");
  EXPECT_EQ(errorOf("[" + dots + "b]\n"), "1: a line holds more than 64 dots");
}

TEST_F(LoadSettings, TablesInTablesAreRefused) {
  std::string text = "a = ";
  for (int i = 0; i < 2000; ++i) {
    text += "[\n{" + std::string("a.a.a.a.a.a.a.a = ");
  }
  EXPECT_NE(errorOf(text), "");
}

#ifndef _WIN32
TEST_F(LoadSettings, FileThatOthersMayWriteIsRefused) {
  for (const mode_t rights : {0620U, 0602U, 0666U}) {
    ASSERT_TRUE(load("[defaults]\ninsecure = true\n")) << error_;
    ASSERT_EQ(chmod(file_.c_str(), rights), 0);
    EXPECT_FALSE(loadFrom(file_));
    EXPECT_EQ(error_,
              file_ + ": others may write to it; run: chmod go-w " + file_);
  }
}

TEST_F(LoadSettings, FileOfAnotherUserIsRefused) {
  ASSERT_TRUE(load("[defaults]\ninsecure = true\n")) << error_;
  if (chown(file_.c_str(), 1234, 1234) != 0) {
    GTEST_SKIP() << "only root can make files of other users";
  }
  EXPECT_FALSE(loadFrom(file_));
  EXPECT_EQ(error_, file_ +
                        ": belongs to another user, who could change it; make "
                        "it yours (chown), or use a copy");
}

TEST_F(LoadSettings, DeviceIsRead) {
  EXPECT_TRUE(loadFrom("/dev/null")) << error_;
}

TEST_F(LoadSettings, PipeThatNobodyWritesToIsRefusedAtOnce) {
  const std::string pipe = directory_.at("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(loadFrom(pipe));
  EXPECT_EQ(error_, pipe + ": is a pipe that nothing was written to");
}

TEST_F(LoadSettings, PipeIsReadToItsEnd) {
  int ends[2] = {-1, -1};
  ASSERT_EQ(pipe(ends), 0);
  std::thread writer([&] {
    EXPECT_EQ(write(ends[1], "[defaults]\n", 11), 11);
    EXPECT_EQ(write(ends[1], "user = 'ada'\n", 13), 13);
    close(ends[1]);
  });
  const auto settings = loadFrom("/dev/fd/" + std::to_string(ends[0]));
  writer.join();
  close(ends[0]);
  ASSERT_TRUE(settings) << error_;
  EXPECT_EQ(settings->defaults.user, "ada");
}
#endif

TEST(Overlay, FirstGoesBeforeSecond) {
  TargetSettings first;
  first.user = "a";
  TargetSettings second;
  second.user = "b";
  second.insecure = true;
  const TargetSettings both = overlay(first, second);
  EXPECT_EQ(both.user, "a");
  EXPECT_EQ(both.insecure, true);
  EXPECT_FALSE(both.timeout);
}

std::string causeOf(const std::string& text) {
  const auto settings = connection::readSettings(text, "a.toml", "/home/a");
  EXPECT_FALSE(settings) << text;
  return settings.error().cause;
}

TEST(SettingsErrors, NameWhatIsMostLikeAnUnknownKey) {
  EXPECT_NE(
      causeOf("[target.n1]\naddress = 'a'\n").find("; did you mean 'targets'?"),
      std::string::npos);
  EXPECT_NE(
      causeOf("[targets.n1]\nadress = 'a'\n").find("; did you mean 'address'?"),
      std::string::npos);
}

TEST(SettingsErrors, ATableWithoutANameIsToldAndEndsNothing) {
  for (const char* text : {"[=a]\n", "[[=a]]\n", "[ ]\n", "a.=1\n"}) {
    const auto settings =
        connection::readSettings(text, "file.toml", "/home/ada");
    ASSERT_FALSE(settings) << text;
    EXPECT_NE(settings.error().cause.find("file.toml:1"), std::string::npos)
        << settings.error().cause;
  }
}

// Undefined in the library, which only a build with sanitizers tells.
TEST(SettingsErrors, LettersWithoutQuotationMarksAreRefused) {
  for (const char* text :
       {"user = \u00e9mile\n", "gr\u00f6\u00dfe = 1\n", "user\u00a0= 'ada'\n",
        "user = 'ada'\u00e9\n", "user = \u3000\n"}) {
    EXPECT_NE(causeOf("\n" + std::string(text)).find("a.toml:2"),
              std::string::npos)
        << text;
  }
}

TEST(SettingsErrors, HintAtMissingQuotationMarks) {
  EXPECT_NE(causeOf("[targets.n1]\naddress = 10.0.0.5\n")
                .find("; a text stands in quotation marks: "),
            std::string::npos);
  EXPECT_EQ(causeOf("[targets.n1]\nuser = hunter2\n").find("hunter2"),
            std::string::npos);
}

TEST_F(LoadSettings, NumbersBeyondTheirLimitsAreRefused) {
  struct Limits {
    const char* key;
    int least;
    int most;
  };
  for (const Limits& limits :
       {Limits{"max-connections", 1, 16}, Limits{"ipmi-port", 1, 65535}}) {
    const auto with = [&](int number) {
      return std::string("[targets.n1]\naddress = \"10.0.0.5\"\n") +
             limits.key + " = " + std::to_string(number) + "\n";
    };
    EXPECT_TRUE(load(with(limits.least))) << limits.key;
    EXPECT_TRUE(load(with(limits.most))) << limits.key;
    EXPECT_FALSE(load(with(limits.least - 1))) << limits.key;
    EXPECT_FALSE(load(with(limits.most + 1))) << limits.key;
  }
}

}  // namespace
