// The whole program where it may not write, or finds no room to.

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/suite/brivel/program_fixture.h"

namespace {

constexpr char kServer[] = "file:" SAMPLES "/rack-server";
constexpr char kNobody[] = "65534";

std::vector<std::string> joined(std::vector<std::string> words,
                                const std::vector<std::string>& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

// Runs the program through others that deny it something.
class ProgramDenied : public ProgramFixture {
 protected:
  void SetUp() override {
    useModules(HEALTH_MODULES);
    if (geteuid() != 0) {
      GTEST_SKIP() << "only root can mount, or run what another user runs";
    }
  }

  ProgramEnd runBy(const std::string& program, std::vector<std::string> words,
                   const std::vector<std::string>& arguments) {
    words.emplace_back(BRIVEL_PROGRAM);
    options.program = program;
    return run(joined(std::move(words), arguments));
  }
};

// The folder "disk" of the home is a file system of a few KiB, which only this
// run sees.
class ProgramFullDisk : public ProgramDenied {
 protected:
  void SetUp() override {
    ProgramDenied::SetUp();
    std::filesystem::create_directory(disk_);
  }

  // Writes `first` into the file "old" there, runs the program, and shows that
  // file behind what the program wrote.
  ProgramEnd runOnDisk(const std::string& first,
                       const std::vector<std::string>& arguments) {
    ProgramEnd end =
        runBy("/usr/bin/env",
              {"unshare", "--mount", "/bin/sh", "-c",
               "mount -t tmpfs -o size=16k none \"$0\" || exit 99\n"
               "cd \"$0\"; printf '%s' \"$1\" > old; shift\n"
               "\"$@\"; status=$?; cat old; exit $status",
               disk_, first},
              arguments);
    EXPECT_NE(end.status, 99) << "no file system can be mounted here";
    return end;
  }

  const std::string disk_ = home.at("disk");
};

TEST_F(ProgramFullDisk, RecordingThatIsNotWholeIsTold) {
  const ProgramEnd end =
      runOnDisk("", {"--bmc", kServer, "--record", disk_ + "/recording",
                     "syshealth", "--device", "all"});
  EXPECT_EQ(end.status, 11) << end.errors;
  EXPECT_NE(end.errors.find("the recording is incomplete: "), std::string::npos)
      << end.errors;
  EXPECT_NE(end.errors.find("No space left on device"), std::string::npos)
      << end.errors;
  EXPECT_NE(end.output.find("PCI Adapter:"), std::string::npos);
}

TEST_F(ProgramFullDisk, ExportLeavesTheOldFile) {
  useModules(EXPORT_MODULES);
  const std::string old(12000, 'x');
  const ProgramEnd end =
      runOnDisk(old, {"--bmc", kServer, "export", "--output", disk_ + "/old"});
  EXPECT_EQ(end.status, 11) << end.errors;
  EXPECT_NE(end.errors.find("/old' cannot be written: No space left on device; "
                            "it stays as it was"),
            std::string::npos)
      << end.errors;
  EXPECT_EQ(end.output, old);
}

TEST_F(ProgramFullDisk, LogHasNoSayInTheReport) {
  const ProgramEnd end = runOnDisk(
      std::string(16384, 'x'),
      {"--bmc", kServer, "--log-file", disk_ + "/brivel.log", "syshealth"});
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_NE(end.errors.find("cannot be written: No space left on device"),
            std::string::npos)
      << end.errors;
}

// A user whose home nobody may write to.
class ProgramReadOnlyHome : public ProgramDenied {
 protected:
  void SetUp() override {
    ProgramDenied::SetUp();
    chmod(home.path().c_str(), 0555);
    if (!IsSkipped() && runAsNobody({"--version"}).status != 0) {
      GTEST_SKIP() << "another user cannot reach " << BRIVEL_PROGRAM;
    }
  }

  ProgramEnd runAsNobody(const std::vector<std::string>& arguments) {
    return runBy("/usr/bin/env",
                 {"setpriv", "--reuid", kNobody, "--clear-groups"}, arguments);
  }
};

TEST_F(ProgramReadOnlyHome, ReportNeedsNoLog) {
  const ProgramEnd end = runAsNobody({"--bmc", kServer, "syshealth"});
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_NE(end.output.find("Processors"), std::string::npos);
  EXPECT_EQ(end.errors, "");
}

TEST_F(ProgramReadOnlyHome, RecordingIsTold) {
  const ProgramEnd end = runAsNobody(
      {"--bmc", kServer, "--record", home.at("recording"), "syshealth"});
  EXPECT_EQ(end.status, 11) << end.errors;
  EXPECT_NE(end.output.find("Processors"), std::string::npos);
  EXPECT_NE(end.errors.find("it cannot be written: Permission denied"),
            std::string::npos)
      << end.errors;
}

}  // namespace
