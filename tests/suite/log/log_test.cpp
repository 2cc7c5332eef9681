#include "syshealth/host/log.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

#include "suite/log/log_file.h"
#include "suite/platform/last_resort.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

// A directory of its own for each case, and no open log after it.
class LogFile : public testing::Test {
 protected:
  ~LogFile() override { logging::closeLog(); }

  std::string path(const std::string& name) const {
    return directory_.at(name);
  }

  static std::string contents(const std::string& file) {
    return support::fileText(file);
  }

  static mode_t rights(const std::string& file) {
    struct stat status = {};
    stat(file.c_str(), &status);
    return status.st_mode & 0777U;
  }

  static void write(unsigned int level, const std::string& text) {
    Tarvex::Log(level, "suite/some/place.cpp", 42).Stream() << text;
  }

  // Writes a log that is as large as one becomes.
  void fill(const std::string& name) const {
    std::ofstream(path(name)) << std::string(4U << 20U, 'x');
  }

  // What standard error says when a log is opened there.
  static std::string warningFor(const std::string& file) {
    testing::internal::CaptureStderr();
    logging::openLog({file, 3});
    write(3, "text");
    return testing::internal::GetCapturedStderr();
  }

  static std::string warning(const std::string& file,
                             const std::string& reason) {
    return "brivel: warning: the log " + file +
           " cannot be written: " + reason + "\n";
  }

 private:
  const support::TempFolder directory_;
};

// The same with another user at hand.
class LogFileOfOthers : public LogFile {
 protected:
  void SetUp() override {
    if (geteuid() != 0) {
      GTEST_SKIP() << "only root can make files of other users";
    }
  }

  static void give(const std::string& file) {
    ASSERT_EQ(lchown(file.c_str(), 1234, 1234), 0);
  }
};

TEST_F(LogFile, EarlyLinesAreWrittenWithinTheThreshold) {
  logging::keepEarlyLines();
  EXPECT_EQ(Tarvex::Log::GetMinLogLevel(), 4U);
  write(3, "early information");
  write(4, "early trace");
  logging::openLog({path("early.log"), 3});
  write(3, "late information");
  logging::closeLog();
  const std::string log = contents(path("early.log"));
  EXPECT_EQ(log.find("early trace"), std::string::npos);
  EXPECT_LT(log.find("early information"), log.find("late information"));
  EXPECT_NE(log.find("place.cpp:42"), std::string::npos);
}

TEST_F(LogFile, EarlyLinesAreDroppedWithoutALog) {
  logging::keepEarlyLines();
  write(1, "early");
  logging::closeLog();
  logging::openLog({path("late.log"), 4});
  write(1, "late");
  EXPECT_EQ(contents(path("late.log")).find("early"), std::string::npos);
}

TEST_F(LogFile, LinesWithoutALogAreDropped) {
  EXPECT_EQ(Tarvex::Log::GetMinLogLevel(), 0U);
  write(1, "nobody reads this");
  write(0, "nor this");
  EXPECT_EQ(logging::logPath(), "");
}

TEST_F(LogFile, LineHoldsTimeLevelPlaceAndText) {
  logging::openLog({path("a.log"), 3});
  write(3, "the connection mode is 2");
  const std::regex expected(
      R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}[+-]\d\d:\d\d \d+ info  )"
      R"(place\.cpp:42 the connection mode is 2\n)");
  EXPECT_TRUE(std::regex_match(contents(path("a.log")), expected))
      << contents(path("a.log"));
}

TEST_F(LogFile, PlaceOfAnotherPlatformIsCutToItsName) {
  logging::openLog({path("a.log"), 3});
  { Tarvex::Log(1, R"(..\..\Src\SystemHealth)", 7).Stream() << "text"; }
  EXPECT_NE(contents(path("a.log")).find(" SystemHealth:7 text"),
            std::string::npos);
}

TEST_F(LogFile, MissingPlaceIsNoTrouble) {
  logging::openLog({path("a.log"), 3});
  { Tarvex::Log(1, nullptr, 0).Stream() << "text"; }
  EXPECT_NE(contents(path("a.log")).find("text"), std::string::npos);
}

TEST_F(LogFile, LevelsHaveTheirNames) {
  logging::openLog({path("a.log"), 4});
  write(1, "one");
  write(3, "three");
  write(4, "four");
  const std::string log = contents(path("a.log"));
  EXPECT_NE(log.find(" error place.cpp:42 one"), std::string::npos) << log;
  EXPECT_NE(log.find(" info  place.cpp:42 three"), std::string::npos) << log;
  EXPECT_NE(log.find(" trace place.cpp:42 four"), std::string::npos) << log;
}

TEST_F(LogFile, ThresholdKeepsHigherLevelsOut) {
  logging::openLog({path("a.log"), 3});
  EXPECT_EQ(Tarvex::Log::GetMinLogLevel(), 3U);
  write(4, "trace");
  EXPECT_EQ(contents(path("a.log")), "");
}

TEST_F(LogFile, LevelZeroWritesNothing) {
  logging::openLog({path("a.log"), 0});
  EXPECT_EQ(Tarvex::Log::GetMinLogLevel(), 0U);
  write(1, "error");
  EXPECT_FALSE(fs::exists(path("a.log")));
}

TEST_F(LogFile, ControlCharactersAreEscaped) {
  logging::openLog({path("a.log"), 3});
  write(1, "evil\n2026-01-01 forged\x1b[2J");
  EXPECT_NE(contents(path("a.log")).find("evil\\n2026-01-01 forged\\x1b[2J\n"),
            std::string::npos);
}

TEST_F(LogFile, FileIsForItsOwnerAlone) {
  logging::openLog({path("a.log"), 3});
  EXPECT_EQ(rights(path("a.log")), 0600U);
}

TEST_F(LogFile, RightsOfAnOlderFileAreTightened) {
  std::ofstream(path("a.log")) << "older\n";
  chmod(path("a.log").c_str(), 0644);
  logging::openLog({path("a.log"), 3});
  EXPECT_EQ(rights(path("a.log")), 0600U);
}

TEST_F(LogFile, LinesAreAdded) {
  std::ofstream(path("a.log")) << "older\n";
  logging::openLog({path("a.log"), 3});
  write(3, "newer");
  EXPECT_EQ(contents(path("a.log")).rfind("older\n", 0), 0U);
}

TEST_F(LogFile, MissingDirectoriesAreMadeForTheOwnerAlone) {
  logging::openLog({path("state/brivel/a.log"), 3});
  write(3, "text");
  EXPECT_NE(contents(path("state/brivel/a.log")), "");
  EXPECT_EQ(rights(path("state")), 0700U);
  EXPECT_EQ(rights(path("state/brivel")), 0700U);
}

TEST_F(LogFile, FullFileIsSetAsideAndTheNextIsPrivate) {
  fill("a.log");
  logging::openLog({path("a.log"), 3});
  write(3, "first line of the next file");
  EXPECT_TRUE(fs::exists(path("a.1.log")));
  EXPECT_NE(contents(path("a.log")).find("first line"), std::string::npos);
  EXPECT_EQ(rights(path("a.log")), 0600U);
}

TEST_F(LogFile, ThreeOlderLogsAreKept) {
  for (int rotation = 0; rotation < 4; ++rotation) {
    fill("a.log");
    logging::openLog({path("a.log"), 3});
    logging::closeLog();
  }
  EXPECT_TRUE(fs::exists(path("a.1.log")));
  EXPECT_TRUE(fs::exists(path("a.2.log")));
  EXPECT_TRUE(fs::exists(path("a.3.log")));
  EXPECT_FALSE(fs::exists(path("a.4.log")));
}

TEST_F(LogFile, UnwritableLogWarnsOnceAndDropsLines) {
  testing::internal::CaptureStderr();
  logging::openLog({"/dev/null/brivel.log", 3});
  write(1, "one");
  write(1, "two");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "brivel: warning: the log /dev/null/brivel.log cannot be written: "
            "Not a directory\n");
  EXPECT_EQ(Tarvex::Log::GetMinLogLevel(), 0U);
}

TEST_F(LogFile, FullDiskWarnsOnce) {
  testing::internal::CaptureStderr();
  logging::openLog({"/dev/full", 3});
  write(1, "one");
  write(1, "two");
  const std::string warning = testing::internal::GetCapturedStderr();
  EXPECT_EQ(warning.rfind("brivel: warning: the log /dev/full cannot be "
                          "written: ",
                          0),
            0U)
      << warning;
  EXPECT_EQ(warning.find('\n'), warning.size() - 1) << warning;
}

TEST_F(LogFile, PipeWithoutAReaderIsNotWaitedFor) {
  mkfifo(path("pipe").c_str(), 0600);
  testing::internal::CaptureStderr();
  logging::openLog({path("pipe"), 3});
  EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST_F(LogFile, SymbolicLinkIsRefused) {
  std::ofstream(path("victim")) << "important\n";
  chmod(path("victim").c_str(), 0644);
  fs::create_symlink(path("victim"), path("a.log"));
  EXPECT_EQ(warningFor(path("a.log")),
            warning(path("a.log"), "it is a symbolic link"));
  EXPECT_EQ(contents(path("victim")), "important\n");
  EXPECT_EQ(rights(path("victim")), 0644U);
}

TEST_F(LogFile, DanglingLinkMakesNoFile) {
  fs::create_symlink(path("victim"), path("a.log"));
  EXPECT_EQ(warningFor(path("a.log")),
            warning(path("a.log"), "it is a symbolic link"));
  EXPECT_FALSE(fs::exists(path("victim")));
}

TEST_F(LogFile, HardLinkIsRefused) {
  std::ofstream(path("victim")) << "important\n";
  chmod(path("victim").c_str(), 0644);
  fs::create_hard_link(path("victim"), path("a.log"));
  EXPECT_EQ(warningFor(path("a.log")),
            warning(path("a.log"), "it has a second name (a hard link)"));
  EXPECT_EQ(contents(path("victim")), "important\n");
  EXPECT_EQ(rights(path("victim")), 0644U);
}

TEST_F(LogFile, LinesFollowTheFileAndNotItsName) {
  logging::openLog({path("a.log"), 3});
  write(3, "first");
  fs::rename(path("a.log"), path("b.log"));
  std::ofstream(path("victim")) << "important\n";
  fs::create_symlink(path("victim"), path("a.log"));
  write(3, "second");
  EXPECT_NE(contents(path("b.log")).find("second"), std::string::npos);
  EXPECT_EQ(contents(path("victim")), "important\n");
}

TEST_F(LogFile, OwnLinkOnTheWayIsFollowed) {
  fs::create_directory(path("real"));
  fs::create_symlink("real", path("link"));
  logging::openLog({path("link/a.log"), 3});
  EXPECT_TRUE(fs::exists(path("real/a.log")));
}

TEST_F(LogFile, LinksInACircleAreRefused) {
  fs::create_symlink("b", path("a"));
  fs::create_symlink("a", path("b"));
  EXPECT_EQ(warningFor(path("a/a.log")),
            warning(path("a/a.log"), "Too many levels of symbolic links"));
}

TEST_F(LogFileOfOthers, FileIsRefused) {
  std::ofstream(path("a.log")) << "older\n";
  give(path("a.log"));
  EXPECT_EQ(warningFor(path("a.log")),
            warning(path("a.log"), "it belongs to another user"));
  EXPECT_EQ(contents(path("a.log")), "older\n");
}

TEST_F(LogFileOfOthers, LinkOnTheWayIsRefused) {
  fs::create_directory(path("real"));
  fs::create_symlink("real", path("link"));
  give(path("link"));
  EXPECT_EQ(warningFor(path("link/a.log")),
            warning(path("link/a.log"),
                    "the symbolic link link on the way belongs to another "
                    "user"));
  EXPECT_FALSE(fs::exists(path("real/a.log")));
}

TEST_F(LogFileOfOthers, NoFolderIsMadeInTheirs) {
  fs::create_directory(path("theirs"));
  give(path("theirs"));
  EXPECT_EQ(warningFor(path("theirs/state/a.log")),
            warning(path("theirs/state/a.log"),
                    "the folder state is missing, and the one above it "
                    "belongs to another user"));
  EXPECT_FALSE(fs::exists(path("theirs/state")));
}

TEST_F(LogFile, LastResortWritesIntoIt) {
  const std::string file = path("brivel.log");
  EXPECT_EXIT(
      {
        logging::openLog({file, 3});
        const platform::LastResort watch(std::chrono::steady_clock::now() -
                                         platform::kLastResort);
        pause();
      },
      testing::ExitedWithCode(platform::kLastResortStatus), "");
  EXPECT_NE(contents(file).find("a session that it opened stays open"),
            std::string::npos);
}

TEST_F(LogFile, LastResortKnowsNoLogAfterItsEnd) {
  logging::openLog({path("brivel.log"), 3});
  EXPECT_GE(platform::lastWordsFile(), 0);
  logging::closeLog();
  EXPECT_EQ(platform::lastWordsFile(), -1);
}

TEST_F(LogFile, PathIsKnownWhileOpen) {
  logging::openLog({path("a.log"), 3});
  EXPECT_EQ(logging::logPath(), path("a.log"));
  logging::closeLog();
  EXPECT_EQ(logging::logPath(), "");
}

}  // namespace
