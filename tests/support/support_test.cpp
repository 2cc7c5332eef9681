#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/child_process.h"
#include "tests/support/file_text.h"
#include "tests/support/machine.h"
#include "tests/support/temp_folder.h"

namespace support {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

ChildOptions shell(const std::string& command) {
  ChildOptions options;
  options.program = "/bin/sh";
  options.arguments = {"-c", command};
  return options;
}

TEST(TempFolder, GoesWithAllThatIsInIt) {
  fs::path path;
  {
    const TempFolder folder;
    path = folder.path();
    EXPECT_EQ(folder.write("/a/b", "text"), (path / "a" / "b").string());
    EXPECT_EQ(fileText(path / "a" / "b"), "text");
  }
  EXPECT_FALSE(fs::exists(path));
}

TEST(TempFolder, FileThatCannotBeWrittenIsNoSilentOne) {
  const TempFolder folder;
  folder.write("a", "");
  EXPECT_THROW(folder.write("a/b", ""), std::exception);
}

TEST(FileText, NothingIsNotTheSameAsEmpty) {
  const TempFolder folder;
  EXPECT_EQ(readFile(folder.write("empty", "")), "");
  EXPECT_EQ(readFile(folder.at("missing")), std::nullopt);
  EXPECT_EQ(readFile(folder.path()), std::nullopt);
}

TEST(ChildProcess, KeepsWhatTheProgramWrites) {
  ChildOptions options = shell("cat; echo \"$A\" >&2; pwd; exit 3");
  options.environment = {"A=b"};
  options.input = "in\n";
  options.directory = "/";
  ChildProcess child(options);
  EXPECT_EQ(child.wait().status, 3);
  EXPECT_EQ(child.output(), "in\n/\n");
  EXPECT_EQ(child.errors(), "b\n");
}

TEST(ChildProcess, ProgramThatIsNotThereHasAStatusOfItsOwn) {
  ChildOptions options;
  options.program = "/nonexistent/program";
  EXPECT_EQ(runChild(options).status, 127);
}

TEST(ChildProcess, SignalThatEndedItIsTold) {
  ChildProcess child(shell("sleep 50"));
  EXPECT_EQ(child.waitFor(milliseconds(0)), std::nullopt);
  child.signal(SIGKILL);
  EXPECT_EQ(child.wait().status, 128 + SIGKILL);
}

TEST(ChildProcess, TimeLimitEndsAProgramThatHangs) {
  ChildOptions options = shell("exec sleep 50");
  options.timeLimit = std::chrono::seconds(1);
  EXPECT_EQ(runChild(options).status, 128 + SIGALRM);
}

TEST(ChildProcess, GoesWithTheObject) {
  pid_t process = -1;
  {
    const ChildProcess child(shell("exec sleep 50"));
    process = child.id();
    EXPECT_EQ(kill(process, 0), 0);
  }
  EXPECT_NE(kill(process, 0), 0);
}

TEST(ChildProcess, TerminalShowsAndTakesLines) {
  if (!hasTerminals()) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  ChildOptions options = shell("echo name: >&2; read name; echo \"$name\"");
  options.terminal = true;
  ChildProcess child(options);
  ASSERT_TRUE(child.await("name:"));
  child.type("x\n");
  EXPECT_EQ(child.wait().status, 0);
  EXPECT_EQ(child.output(), "x\n");
}

}  // namespace
}  // namespace support
