// The built program, from the arguments to the exit status.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <regex>
#include <string>
#include <utility>

#include "tests/suite/brivel/program_fixture.h"
#include "tests/support/file_text.h"

namespace {

namespace fs = std::filesystem;

class Program : public ProgramFixture {};

TEST_F(Program, HandsOptionsToTheApplication) {
  const ProgramEnd end =
      run({"sample", "--device", "fan, dimm", "--node", "-1"});
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.output, "mode 1\ndevice 'fan, dimm'\nnode '-1'\n");
  EXPECT_EQ(end.errors, "");
}

TEST_F(Program, HandsAnEmptyDeviceToTheApplication) {
  EXPECT_EQ(run({"sample", "--device", ""}).output, "mode 1\ndevice ''\n");
}

TEST_F(Program, HandsTheModeToTheApplication) {
  EXPECT_EQ(run({"--bmc", "file:x", "sample"}).output, "mode 2\n");
  EXPECT_EQ(run({"--esxi", "host", "sample"}).output, "mode 4\n");
}

TEST_F(Program, ShowsTheHelp) {
  const ProgramEnd end = run({"--help"});
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.output.rfind("Usage: brivel ", 0), 0U);
  EXPECT_NE(end.output.find("\nApplications: sample\n"), std::string::npos);
  EXPECT_EQ(end.errors, "");
}

TEST_F(Program, ShowsTheVersion) {
  const ProgramEnd end = run({"--version"});
  EXPECT_EQ(end.status, 0);
  EXPECT_TRUE(std::regex_match(
      end.output,
      std::regex("brivel " BRIVEL_VERSION "\ncommit ([0-9a-f]{12}|unknown)\n"
                 "Boost 1\\.[0-9]+\\.[0-9]+, libcurl [0-9.]+, "
                 "OpenSSL [0-9.a-z]+\n")))
      << end.output;
  EXPECT_EQ(run({"-V"}).output, end.output);
}

TEST_F(Program, WrongUsageIsToldWithTheWayToTheHelp) {
  const ProgramEnd end = run({"sample", "--node", "abc"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.output, "");
  EXPECT_EQ(end.errors,
            "brivel: --node: 'abc' is no number\nTry 'brivel --help'.\n");
}

TEST_F(Program, WrongTargetIsWrongUsage) {
  const ProgramEnd end = run({"--bmc", "fe80::1", "sample"});
  EXPECT_EQ(end.status, 2);
  EXPECT_NE(end.errors.find("[fe80::1]"), std::string::npos) << end.errors;
}

TEST_F(Program, PasswordInTheTargetIsNotRepeatedAnywhere) {
  const ProgramEnd end = run({"--bmc", "admin:hunter2@bmc", "sample"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.errors.find("hunter2"), std::string::npos) << end.errors;
  EXPECT_EQ(log().find("hunter2"), std::string::npos);
}

TEST_F(Program, SuiteWideCodeIsTheExitStatus) {
  const ProgramEnd end = run({"sample", "13"});
  EXPECT_EQ(end.status, 13);
  EXPECT_EQ(end.errors,
            "brivel: result 13: Connection failed. Log: " + logPath() + "\n");
}

TEST_F(Program, FailedRunIsToldOfItsUnknownItem) {
  EXPECT_NE(run({"sample", "25", "--device", "memory"})
                .errors.find("Cause: 'memory' is no item; items are system,"),
            std::string::npos);
}

TEST_F(Program, FailedRunOnAnEsxiHostIsToldOfTheController) {
  EXPECT_NE(run({"--esxi", "vm1", "sample", "25"})
                .errors.find("Cause: vm1: ESXi hosts are not asked"),
            std::string::npos);
}

TEST_F(Program, OtherCodesAreOneExitStatusAndTold) {
  const ProgramEnd end = run({"sample", "65642"});
  EXPECT_EQ(end.status, 64);
  EXPECT_EQ(end.errors.rfind("brivel: result 65642: ", 0), 0U) << end.errors;
  EXPECT_EQ(run({"sample", "-1"}).status, 64);
}

TEST_F(Program, RefusedCommandIsTheResultAndIsNotRun) {
  const ProgramEnd end = run({"sample", "set"});
  EXPECT_EQ(end.status, 4);
  EXPECT_EQ(end.output, "");
  EXPECT_EQ(end.errors.rfind("brivel: result 4: Invalid command.", 0), 0U);
  EXPECT_EQ(log().find("sample command"), std::string::npos);
}

TEST_F(Program, MessageOfTheApplicationGoesBeforeTheCatalogues) {
  const ProgramEnd end = run({"sample", "304"});
  EXPECT_EQ(end.status, 17);
  EXPECT_EQ(end.errors.rfind("brivel: result 17: a message of its own", 0), 0U)
      << end.errors;
}

TEST_F(Program, ExceptionOfTheApplicationIsAnInternalError) {
  const ProgramEnd end = run({"sample", "302"});
  EXPECT_EQ(end.status, 17);
  EXPECT_NE(end.errors.find("out of ideas"), std::string::npos) << end.errors;
  EXPECT_EQ(run({"sample", "305"}).status, 17);
}

TEST_F(Program, InterruptedRunHasItsOwnStatus) {
  const ProgramEnd end = run({"sample", "303"});
  EXPECT_EQ(end.status, 130);
  EXPECT_EQ(end.errors, "brivel: interrupted\n");
}

TEST_F(Program, MissingApplicationIsToldWithTheOthers) {
  const ProgramEnd end = run({"nope"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(end.errors, "brivel: no application 'nope' in " SOUND_MODULES
                        "; there are: sample\n");
}

TEST_F(Program, ApplicationWithoutAnEntryPointIsTold) {
  useModules(BROKEN_MODULES);
  for (const auto& [name, entry] :
       {std::pair("no_init", "Init"), std::pair("no_app_main", "AppMain"),
        std::pair("no_param_register", "ParamRegister"),
        std::pair("empty", "Init")}) {
    const ProgramEnd end = run({name});
    EXPECT_EQ(end.status, 3) << name;
    EXPECT_EQ(end.errors, std::string("brivel: " BROKEN_MODULES "/") + name +
                              ".so is no application: it has no entry point " +
                              entry + "\n");
  }
}

TEST_F(Program, ApplicationOfAnotherNameIsTold) {
  useModules(BROKEN_MODULES);
  const ProgramEnd misnamed = run({"misnamed"});
  EXPECT_EQ(misnamed.status, 3);
  EXPECT_EQ(misnamed.errors,
            "brivel: " BROKEN_MODULES
            "/misnamed.so registers the application 'other', not 'misnamed'\n");
  const ProgramEnd nameless = run({"nameless"});
  EXPECT_EQ(nameless.status, 3);
  EXPECT_EQ(nameless.errors,
            "brivel: " BROKEN_MODULES
            "/nameless.so registers no application, not 'nameless'\n");
}

TEST_F(Program, TruncatedOrForeignLibraryIsTold) {
  const support::TempFolder modules;
  const std::string bytes = support::fileText(SOUND_MODULES "/sample.so");
  modules.write("cut.so", bytes.substr(0, bytes.size() / 2));
  modules.write("text.so", "not a library\n");
  useModules(modules.path().string());
  EXPECT_EQ(run({"cut"}).errors, "brivel: " + modules.at("cut.so") +
                                     " cannot be loaded: it is truncated\n");
  EXPECT_EQ(run({"text"}).errors, "brivel: " + modules.at("text.so") +
                                      " cannot be loaded: it is no library\n");
  EXPECT_EQ(run({"text"}).status, 3);
}

TEST_F(Program, ListsTheApplications) {
  const ProgramEnd end = run({"applications"});
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.output, "sample  77  " SOUND_MODULES "/sample.so\n");
  EXPECT_EQ(end.errors, "");
}

TEST_F(Program, ListGoesOnBehindABrokenApplication) {
  const support::TempFolder modules;
  fs::copy(SOUND_MODULES "/sample.so", modules.at("sample.so"));
  modules.write("broken.so", "text");
  useModules(modules.path().string());
  const ProgramEnd end = run({"applications"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(end.output, "sample  77  " + modules.at("sample.so") + "\n");
  EXPECT_EQ(end.errors, "brivel: " + modules.at("broken.so") +
                            " cannot be loaded: it is no library\n");
}

TEST_F(Program, NoApplicationsAreTold) {
  useModules("/nonexistent");
  const ProgramEnd end = run({"applications"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(end.errors, "brivel: no applications in /nonexistent\n");
}

TEST_F(Program, SettingsThatAreNotUnderstoodEndTheRun) {
  writeSettings("[defaults]\nusr = 'a'\n");
  const ProgramEnd end = run({"sample"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.errors.rfind("brivel: " + home.path().string() +
                                 "/.config/brivel/brivel.toml:2: unknown key "
                                 "'usr' in [defaults]",
                             0),
            0U)
      << end.errors;
}

TEST_F(Program, NamedSettingsReplaceTheUsersOwn) {
  writeSettings("broken");
  const std::string file = home.write("other.toml", "");
  EXPECT_EQ(run({"--config", file, "sample"}).status, 0);
}

TEST_F(Program, NamedSettingsMustExist) {
  const ProgramEnd end = run({"--config", "/nonexistent.toml", "sample"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.errors,
            "brivel: /nonexistent.toml: No such file or directory\n");
}

TEST_F(Program, LogIsTheUsersOwn) {
  run({"sample"});
  EXPECT_NE(log().find("sample command 1"), std::string::npos) << log();
  struct stat status = {};
  ASSERT_EQ(stat(logPath().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(Program, LogOptionsGoBeforeTheSettings) {
  writeSettings("[defaults]\nlog-file = '" + home.at("a.log") +
                "'\nlog-level = 3\n");
  run({"sample"});
  EXPECT_TRUE(fs::exists(home.at("a.log")));
  run({"--log-file", home.at("b.log"), "--log-level", "1", "sample"});
  EXPECT_EQ(fs::file_size(home.at("b.log")), 0U);
}

TEST_F(Program, LogLevelZeroWritesNoLogAndNamesNone) {
  const ProgramEnd end = run({"--log-level", "0", "sample", "13"});
  EXPECT_EQ(end.errors, "brivel: result 13: Connection failed.\n");
  EXPECT_FALSE(fs::exists(logPath()));
}

TEST_F(Program, UnwritableLogWarnsAndRuns) {
  const ProgramEnd end = run({"--log-file", "/dev/null/a.log", "sample"});
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.output, "mode 1\n");
  EXPECT_EQ(end.errors,
            "brivel: warning: the log /dev/null/a.log cannot be written: Not a "
            "directory\n");
}

TEST_F(Program, RunsWithoutAHome) {
  options.environment.erase(options.environment.begin());
  EXPECT_EQ(run({"--log-level", "0", "sample"}).status, 0);
}

TEST_F(Program, OutputThatCannotBeWrittenIsAFailure) {
  options.outputFile = "/dev/full";
  const ProgramEnd end = run({"sample"});
  EXPECT_EQ(end.status, 11);
  EXPECT_NE(end.errors.find("standard output cannot be written"),
            std::string::npos)
      << end.errors;
}

TEST_F(Program, ClosedOutputIsAFailureAndTakesNoOtherFilesPlace) {
  options.closed = {STDIN_FILENO, STDOUT_FILENO};
  const ProgramEnd end = run({"sample"});
  EXPECT_EQ(end.status, 11);
  EXPECT_EQ(log().find("mode 1"), std::string::npos);
}

TEST_F(Program, ReaderThatGoesAwayIsNoNoise) {
  int ends[2] = {-1, -1};
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  close(ends[0]);
  options.outputDescriptor = ends[1];
  const ProgramEnd end = run({"sample"});
  close(ends[1]);
  EXPECT_EQ(end.status, 11);
  EXPECT_EQ(end.errors, "");
}

TEST_F(Program, StatsAreOnStandardError) {
  const ProgramEnd end = run({"--stats", "sample"});
  EXPECT_EQ(end.output, "mode 1\n");
  EXPECT_EQ(end.errors.rfind("brivel: wall time ", 0), 0U) << end.errors;
}

TEST_F(Program, EsxiTargetMustBeAnAddress) {
  EXPECT_EQ(run({"--esxi", "a/b", "sample"}).status, 2);
  EXPECT_EQ(run({"--esxi", "file:x", "sample"}).status, 2);
}

TEST_F(Program, ThisServerWithoutASourceSaysWhatToConfigure) {
  const ProgramEnd end = run({"sample", "301"});
  EXPECT_EQ(end.status, 26);
  EXPECT_NE(end.errors.find("[inband]"), std::string::npos) << end.errors;
  EXPECT_NE(end.errors.find("--bmc"), std::string::npos) << end.errors;
}

TEST_F(Program, ThisServersSourceServesAllItsNodes) {
  writeSettings("[inband]\nsource = 'file:" SAMPLES "/two-node'\n");
  EXPECT_EQ(run({"sample", "300"}).output,
            "targets error 0: file:" SAMPLES "/two-node/0 file:" SAMPLES
            "/two-node/1\n");
}

TEST_F(Program, NamedTargetIsFoundInTheSettings) {
  writeSettings("[targets.lab]\naddress = 'file:" SAMPLES "/rack-server'\n");
  EXPECT_EQ(run({"--bmc", "lab", "sample", "301"}).output,
            "reached 0 user '' from ''\n");
}

TEST_F(Program, MissingRecordingIsToldWithItsCause) {
  const ProgramEnd end = run({"--bmc", "file:/nonexistent", "sample", "301"});
  EXPECT_EQ(end.status, 6);
  EXPECT_EQ(end.errors.rfind("brivel: result 6: Local file doesn't exist. "
                             "Cause: file:/nonexistent: ",
                             0),
            0U)
      << end.errors;
}

}  // namespace
