// The whole program on a machine that denies it something.

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/bmc/control/controller.h"
#include "tests/suite/brivel/program_fixture.h"

namespace {

class ProgramLimits : public ProgramFixture {
 protected:
  void SetUp() override { useModules(HEALTH_MODULES); }

  // Runs it under a limit of the shell, such as "-n 16", against a controller,
  // and sees to it that it ends in order, whatever becomes of the report.
  ProgramEnd runUnder(const std::string& limit) {
    const bmc::Controller controller({"--tree", SAMPLES "/rack-server"});
    EXPECT_TRUE(controller.running());
    std::vector<std::string> words = {
        "-c",
        "ulimit " + limit + "; exec \"$0\" \"$@\"",
        BRIVEL_PROGRAM,
        "--bmc",
        controller.https(),
        "--user",
        "admin",
        "--cacert",
        controller.ready().certificate,
        "syshealth",
        "--device",
        "all"};
    options.program = "/bin/sh";
    options.environment.emplace_back("BRIVEL_PASSWORD=Nothing-2-Hide");
    ProgramEnd end = run(words);
    options.environment.pop_back();
    options.program = BRIVEL_PROGRAM;
    EXPECT_LT(end.status, kSignalled) << limit << ": " << end.errors;
    EXPECT_NE(end.output + end.errors, "") << limit;
    EXPECT_EQ(controller.counters().sessionsOpen, 0U)
        << limit << ": " << end.errors;
    return end;
  }
};

TEST_F(ProgramLimits, SixteenFilesAreEnough) {
  const ProgramEnd end = runUnder("-n 16");
  EXPECT_EQ(end.status, 0) << end.errors;
}

// The sanitizers' runtime needs descriptors and address space of its own.
#ifndef SYSHEALTH_SANITIZED
TEST_F(ProgramLimits, WithFewFilesItSaysWhatIsMissing) {
  for (int files = 4; files < 16; ++files) {
    const ProgramEnd end = runUnder("-n " + std::to_string(files));
    if (end.status != 0) {
      EXPECT_NE(end.errors, "") << files;
    }
  }
}

TEST_F(ProgramLimits, WithLittleMemoryItEndsInOrder) {
  for (int mebibytes = 10; mebibytes <= 100; mebibytes += 3) {
    runUnder("-v " + std::to_string(mebibytes * 1024));
  }
}
#endif

TEST_F(ProgramLimits, LogOnAFullDiskIsTold) {
  const ProgramEnd end = run({"--bmc", "file:" SAMPLES "/rack-server",
                              "--log-file", "/dev/full", "syshealth"});
  EXPECT_EQ(end.status, 0);
  EXPECT_NE(end.errors.find("the log /dev/full cannot be written: "),
            std::string::npos)
      << end.errors;
}

// The log and the report: both are files here.
TEST_F(ProgramLimits, LimitOfFileSizeEndsNoRun) { runUnder("-f 1"); }

TEST_F(ProgramLimits, ClosedStreamsAreNoTrouble) {
  // Every choice of the three. The report has to go somewhere.
  for (unsigned int choice = 1; choice < 8; ++choice) {
    options.closed.clear();
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      if (((choice >> static_cast<unsigned int>(stream)) & 1U) != 0) {
        options.closed.push_back(stream);
      }
    }
    const bool hasOutput = ((choice >> STDOUT_FILENO) & 1U) == 0;
    EXPECT_EQ(
        run({"--bmc", "file:" SAMPLES "/rack-server", "syshealth"}).status,
        hasOutput ? 0 : 11)
        << choice;
  }
}

}  // namespace
