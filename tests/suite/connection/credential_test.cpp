#include "suite/connection/password/credential.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "suite/connection/password/environment_password.h"
#include "tests/support/temp_folder.h"

namespace {

using base::Failure;
using base::FailureKind;
using base::Secret;
using connection::Credential;
using connection::findCredential;
using connection::takeEnvironmentPassword;
using connection::Target;

// Puts a text on standard input for as long as it lives.
class Input {
 public:
  explicit Input(const std::string& text) : before_(dup(STDIN_FILENO)) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    EXPECT_EQ(write(ends[1], text.data(), text.size()),
              static_cast<ssize_t>(text.size()));
    close(ends[1]);
    dup2(ends[0], STDIN_FILENO);
    close(ends[0]);
  }
  ~Input() {
    dup2(before_, STDIN_FILENO);
    close(before_);
  }
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

 private:
  int before_;
};

class FindCredential : public testing::Test {
 protected:
  FindCredential() {
    target_.user = "admin";
    target_.address.host = "10.0.0.5";
  }

  base::Result<Credential> find(std::optional<Secret> environment = {}) {
    auto credential = findCredential(target_, std::move(environment));
    failure_ = credential ? Failure() : credential.error();
    return credential;
  }

  static std::optional<Secret> secret(std::string text) {
    return Secret(std::move(text));
  }

  // The password found, or the reason why there is none.
  std::string found(std::optional<Secret> environment = {}) {
    const auto credential = find(std::move(environment));
    return credential ? credential->password.text()
                      : "(" + failure_.cause + ")";
  }

  support::TempFolder directory_;
  Target target_;
  Failure failure_;
};

TEST_F(FindCredential, FileOptionGoesBeforeAllElse) {
  const Input input("from stdin\n");
  target_.password.optionFile = directory_.write("a", "from option\n");
  target_.password.settingsFile = directory_.write("b", "from settings\n");
  target_.password.standardInput = true;
  EXPECT_EQ(found(secret("from environment")), "from option");
}

TEST_F(FindCredential, StandardInputGoesBeforeTheEnvironment) {
  const Input input("from stdin\n");
  target_.password.standardInput = true;
  EXPECT_EQ(found(secret("from environment")), "from stdin");
}

TEST_F(FindCredential, EnvironmentGoesBeforeTheSettings) {
  target_.password.settingsFile = directory_.write("b", "from settings\n");
  EXPECT_EQ(found(secret("from environment")), "from environment");
}

TEST_F(FindCredential, SettingsFileIsTheLastOfTheFiles) {
  target_.password.settingsFile = directory_.write("b", "from settings\n");
  EXPECT_EQ(found(), "from settings");
}

TEST_F(FindCredential, OriginSaysWhereButNotWhat) {
  target_.password.optionFile = directory_.write("a", "hunter2\n");
  const auto credential = find();
  ASSERT_TRUE(credential);
  EXPECT_EQ(credential->origin, "file " + directory_.at("a"));
}

TEST_F(FindCredential, NoSourceWithoutATerminalIsToldWhatToDo) {
  const Input input("not asked for\n");
  EXPECT_FALSE(find());
  EXPECT_EQ(failure_.kind, FailureKind::kNoCredentials);
  EXPECT_NE(failure_.remedy.find("--password-file"), std::string::npos);
}

TEST_F(FindCredential, FailingSourceIsNotPassedOver) {
  target_.password.optionFile = directory_.at("none");
  EXPECT_FALSE(find(secret("from environment")));
  EXPECT_EQ(failure_.kind, FailureKind::kCredentialMissing);
}

TEST_F(FindCredential, FirstLineIsThePassword) {
  target_.password.optionFile = directory_.write("a", "one\ntwo\n");
  EXPECT_EQ(found(), "one");
}

TEST_F(FindCredential, LineEndMayBeMissingOrDouble) {
  target_.password.optionFile = directory_.write("a", "one");
  EXPECT_EQ(found(), "one");
  target_.password.optionFile = directory_.write("b", "one\r\n");
  EXPECT_EQ(found(), "one");
}

TEST_F(FindCredential, BlanksBelongToThePassword) {
  target_.password.optionFile = directory_.write("a", " a b \n");
  EXPECT_EQ(found(), " a b ");
}

TEST_F(FindCredential, EmptyFileIsRefused) {
  target_.password.optionFile = directory_.write("a", "\n");
  EXPECT_FALSE(find());
  EXPECT_EQ(failure_.kind, FailureKind::kFileUnreadable);
}

TEST_F(FindCredential, LongestPasswordIsTaken) {
  const std::string longest(1024, 'x');
  target_.password.optionFile = directory_.write("a", longest + "\n");
  EXPECT_EQ(found(), longest);
}

TEST_F(FindCredential, LongerOnesAndNulBytesAreRefused) {
  target_.password.optionFile = directory_.write("a", std::string(1025, 'x'));
  EXPECT_FALSE(find());
  target_.password.optionFile = directory_.write("b", std::string("a\0b\n", 4));
  EXPECT_FALSE(find());
}

TEST_F(FindCredential, FileThatOthersCanReadIsRefusedWithTheRemedy) {
  for (const mode_t rights : {0640U, 0604U, 0660U}) {
    const std::string file =
        directory_.write("a", "hunter2\n", std::filesystem::perms(rights));
    target_.password.optionFile = file;
    EXPECT_FALSE(find()) << rights;
    EXPECT_EQ(failure_.kind, FailureKind::kFileUnreadable);
    EXPECT_EQ(failure_.remedy, "run: chmod 600 " + file);
    EXPECT_EQ(describe(failure_).find("hunter2"), std::string::npos);
  }
}

TEST_F(FindCredential, DirectoryIsRefused) {
  chmod(directory_.path().string().c_str(), 0700);
  target_.password.optionFile = directory_.path().string();
  EXPECT_FALSE(find());
  EXPECT_EQ(failure_.kind, FailureKind::kFileUnreadable);
  EXPECT_EQ(failure_.cause, "the password file " + directory_.path().string() +
                                " is a directory");
  EXPECT_EQ(failure_.remedy, "");
}

TEST_F(FindCredential, FileOfAnotherUserIsRefused) {
  const std::string file = directory_.write("a", "hunter2\n");
  if (chown(file.c_str(), 1234, 1234) != 0) {
    GTEST_SKIP() << "only root can make files of other users";
  }
  target_.password.optionFile = file;
  EXPECT_EQ(found(), "(the password file " + file +
                         " belongs to another user, who could change it)");
}

TEST_F(FindCredential, ByteOrderMarkIsNoPartOfThePassword) {
  target_.password.optionFile = directory_.write("a", "\xEF\xBB\xBFhunter2\n");
  EXPECT_EQ(found(), "hunter2");
  target_.password.optionFile = directory_.write("b", "\xEF\xBB\xBF\n");
  EXPECT_FALSE(find());
}

TEST_F(FindCredential, TerminalIsNoPasswordFile) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  const std::string name = ptsname(terminal);
  const int other = open(name.c_str(), O_RDWR | O_NOCTTY);
  EXPECT_EQ(write(terminal, "hunter2\n", 8), 8);
  target_.password.optionFile = name;
  EXPECT_EQ(found(), "(the password file " + name +
                         " is a terminal, which shows what is typed)");
  close(other);
  close(terminal);
}

TEST_F(FindCredential, PipeThatNobodyWritesToIsRefusedAtOnce) {
  const std::string pipe = directory_.at("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  target_.password.optionFile = pipe;
  EXPECT_EQ(found(), "(the password file " + pipe +
                         " holds no password in its first line)");
}

TEST_F(FindCredential, PipeIsWaitedForWhileSomebodyHoldsIt) {
  int ends[2] = {-1, -1};
  ASSERT_EQ(pipe(ends), 0);
  std::thread writer([&] {
    EXPECT_EQ(write(ends[1], "hun", 3), 3);
    EXPECT_EQ(write(ends[1], "ter2\n", 5), 5);
  });
  target_.password.optionFile = "/dev/fd/" + std::to_string(ends[0]);
  EXPECT_EQ(found(), "hunter2");
  writer.join();
  close(ends[0]);
  close(ends[1]);
}

TEST_F(FindCredential, StandardInputIsReadUpToTheLineEnd) {
  const Input input("secret\nrest\n");
  target_.password.standardInput = true;
  EXPECT_EQ(found(), "secret");
  char rest[5] = {};
  EXPECT_EQ(read(STDIN_FILENO, rest, 4), 4);
  EXPECT_STREQ(rest, "rest");
}

TEST_F(FindCredential, EmptyStandardInputIsRefused) {
  const Input input("");
  target_.password.standardInput = true;
  EXPECT_FALSE(find());
  EXPECT_EQ(failure_.cause,
            "standard input holds no password in its first "
            "line");
}

TEST(TakeEnvironmentPassword, TakesAndRemovesTheVariable) {
  setenv("BRIVEL_PASSWORD", "hunter2", 1);
  const auto password = takeEnvironmentPassword();
  ASSERT_TRUE(password);
  EXPECT_EQ(password->text(), "hunter2");
  EXPECT_EQ(getenv("BRIVEL_PASSWORD"), nullptr);
}

TEST(TakeEnvironmentPassword, OverwritesTheVariablesBytes) {
  char variable[] = "BRIVEL_PASSWORD=hunter2";
  putenv(variable);
  takeEnvironmentPassword();
  EXPECT_EQ(std::memcmp(variable + std::strlen("BRIVEL_PASSWORD="),
                        "\0\0\0\0\0\0\0", 7),
            0);
}

TEST(TakeEnvironmentPassword, OverwritesEachOfSeveral) {
  char first[] = "BRIVEL_PASSWORD=hunter2";
  char second[] = "BRIVEL_PASSWORD=hunter3";
  char* several[] = {first, second, nullptr};
  char** const before = environ;
  environ = several;
  const auto password = takeEnvironmentPassword();
  EXPECT_EQ(getenv("BRIVEL_PASSWORD"), nullptr);
  environ = before;
  ASSERT_TRUE(password);
  EXPECT_EQ(password->text(), "hunter2");
  EXPECT_STREQ(first, "BRIVEL_PASSWORD=");
  EXPECT_STREQ(second, "BRIVEL_PASSWORD=");
}

TEST(TakeEnvironmentPassword, GivesNothingWhenUnsetOrEmpty) {
  unsetenv("BRIVEL_PASSWORD");
  EXPECT_FALSE(takeEnvironmentPassword());
  setenv("BRIVEL_PASSWORD", "", 1);
  EXPECT_FALSE(takeEnvironmentPassword());
}

TEST(Secret, ForbidsCoreDumps) {
  EXPECT_EXIT(
      {
        const Secret secret(std::string("hunter2"));
        rlimit limit = {};
        getrlimit(RLIMIT_CORE, &limit);
        _exit(limit.rlim_cur == 0 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Secret, LeavesNothingInWhatItWasMovedFrom) {
  Secret first(std::string("hunter2"));
  const char* const bytes = first.text().data();
  const Secret second(std::move(first));
  EXPECT_EQ(second.text(), "hunter2");
  EXPECT_NE(std::string(bytes, 7), "hunter2");
}

}  // namespace
