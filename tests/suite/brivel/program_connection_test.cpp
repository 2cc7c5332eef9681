// The built program against a live controller: logins, trust, interrupts.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/bmc/control/controller.h"
#include "tests/suite/brivel/program_fixture.h"
#include "tests/support/machine.h"

namespace {

constexpr const char* kPassword = "Nothing-2-Hide";

class ProgramConnection : public ProgramFixture {
 protected:
  ProgramConnection() { EXPECT_TRUE(controller.running()); }

  // Arguments that let the sample application log in, trusting as told.
  std::vector<std::string> login(const std::vector<std::string>& trust) const {
    std::vector<std::string> arguments = {
        "--bmc", "https://admin@" + controller.https(), "sample", "301"};
    arguments.insert(arguments.begin(), trust.begin(), trust.end());
    return arguments;
  }

  std::vector<std::string> trustingLogin(
      const std::vector<std::string>& more = {}) const {
    std::vector<std::string> trust = more;
    trust.insert(trust.end(), {"--cacert", controller.ready().certificate});
    return login(trust);
  }

  void setPassword(const std::string& password) {
    options.environment.push_back("BRIVEL_PASSWORD=" + password);
  }

  bmc::Controller controller{{"--tree", SAMPLES "/rack-server"}};
};

TEST_F(ProgramConnection, LogsInAndOutOnce) {
  setPassword(kPassword);
  const ProgramEnd end = run(trustingLogin());
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_EQ(end.output, "reached 0 user 'admin' from 'BRIVEL_PASSWORD'\n");
  EXPECT_EQ(end.errors, "");
  const bmc::Counters counters = controller.counters();
  EXPECT_EQ(counters.sessionsCreated, 1U);
  EXPECT_EQ(counters.sessionsDeleted, 1U);
}

TEST_F(ProgramConnection, PipeOfAuthoritiesIsRefusedAtOnce) {
  const std::string pipe = home.at("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  setPassword(kPassword);
  const ProgramEnd end = run(login({"--cacert", pipe}));
  EXPECT_EQ(end.status, 36);
  EXPECT_NE(end.errors.find("the trusted authorities cannot be read"),
            std::string::npos)
      << end.errors;
}

TEST_F(ProgramConnection, TakesThePasswordFromAFile) {
  const std::string file = home.write("pw", std::string(kPassword) + "\n");
  const ProgramEnd end = run(trustingLogin({"--password-file", file}));
  EXPECT_EQ(end.output, "reached 0 user 'admin' from 'file " + file + "'\n")
      << end.errors;
}

TEST_F(ProgramConnection, TakesThePasswordFromStandardInput) {
  options.input = std::string(kPassword) + "\n";
  EXPECT_EQ(run(trustingLogin({"--password-stdin"})).status, 0);
}

TEST_F(ProgramConnection, TakesThePasswordFromTheSettings) {
  const std::string file = home.write("pw", std::string(kPassword) + "\n");
  writeSettings("[defaults]\nuser = 'admin'\npassword-file = '~/pw'\n");
  EXPECT_EQ(run(trustingLogin()).status, 0);
}

TEST_F(ProgramConnection, AsksAtTheTerminalWithoutAnEcho) {
  if (!support::hasTerminals()) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  options.terminal = true;
  support::ChildProcess child(started(trustingLogin()));
  ASSERT_TRUE(
      child.await("Password for admin at " + controller.https() + ": "));
  child.type(std::string(kPassword) + "\n");
  EXPECT_EQ(child.wait().status, 0) << child.errors();
  EXPECT_EQ(child.output(), "reached 0 user 'admin' from 'terminal'\n");
  EXPECT_EQ(child.errors().find(kPassword), std::string::npos);
}

TEST_F(ProgramConnection, StandardInputThatIsATerminalIsThePrompt) {
  if (!support::hasTerminals()) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  options.terminal = true;
  support::ChildProcess child(started(trustingLogin({"--password-stdin"})));
  ASSERT_TRUE(child.await(": "));
  child.type(std::string(kPassword) + "\n");
  EXPECT_EQ(child.wait().status, 0) << child.errors();
  EXPECT_EQ(child.errors().find(kPassword), std::string::npos);
}

// Nobody types a password for a controller that cannot be reached or is not
// trusted.
TEST_F(ProgramConnection, NobodyIsAskedInVain) {
  if (!support::hasTerminals()) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  options.terminal = true;
  for (const std::string& target :
       {std::string("admin@127.0.0.1:1"), "admin@" + controller.https()}) {
    support::ChildProcess child(started({"--bmc", target, "sample", "301"}));
    const int status = child.wait().status;
    EXPECT_TRUE(status == 13 || status == 36) << child.errors();
    EXPECT_EQ(child.errors().find("Password"), std::string::npos)
        << child.errors();
  }
}

// The controller is reached and trusted before anybody is asked.
TEST_F(ProgramConnection, InterruptAtThePromptEndsTheRun) {
  if (!support::hasTerminals()) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  options.terminal = true;
  support::ChildProcess child(started(trustingLogin()));
  ASSERT_TRUE(child.await(": "));
  child.signal(SIGINT);
  EXPECT_EQ(child.wait().status, 130) << child.errors();
  EXPECT_EQ(controller.counters().requests, 1U);
  EXPECT_EQ(controller.counters().sessionsCreated, 0U);
}

TEST_F(ProgramConnection, SignalAtThePromptLeavesTheTerminalAsItWas) {
  if (!support::hasTerminals()) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  options.terminal = true;
  for (const int number : {SIGQUIT, SIGALRM, SIGUSR1}) {
    support::ChildProcess child(started(trustingLogin()));
    ASSERT_TRUE(child.await(": "));
    EXPECT_FALSE(child.terminalEchoes());
    child.type("half a pass");
    child.signal(number);
    EXPECT_EQ(child.wait().status, 128 + number);
    EXPECT_TRUE(child.terminalEchoes()) << number;
  }
}

TEST_F(ProgramConnection, PromptThatIsStoppedIsShownAgain) {
  if (!support::hasTerminals()) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  options.terminal = true;
  // A shell with jobs, which shows the terminal's settings while its job is
  // stopped, and then lets it go on.
  support::ChildOptions shell = started({});
  shell.arguments = {"-c", "set -m; \"$0\" \"$@\"; stty -a >&2; fg > /dev/null",
                     shell.program};
  for (const std::string& argument : trustingLogin()) {
    shell.arguments.push_back(argument);
  }
  shell.program = "/bin/sh";
  shell.environment.push_back("PATH=/usr/bin:/bin");
  support::ChildProcess child(shell);
  const std::string question =
      "Password for admin at " + controller.https() + ": ";
  ASSERT_TRUE(child.await(question));
  EXPECT_FALSE(child.terminalEchoes());
  child.type("\x1a");  // Ctrl-Z
  ASSERT_TRUE(child.await(" echo ")) << child.errors();
  ASSERT_TRUE(child.await("\n" + question)) << child.errors();
  EXPECT_FALSE(child.terminalEchoes());
  child.type(std::string(kPassword) + "\n");
  EXPECT_EQ(child.wait().status, 0) << child.errors();
  EXPECT_EQ(child.output(), "reached 0 user 'admin' from 'terminal'\n");
  EXPECT_EQ(child.errors().find(kPassword), std::string::npos);
}

TEST_F(ProgramConnection, MissingPasswordIsToldWithoutATerminal) {
  const ProgramEnd end = run(trustingLogin());
  EXPECT_EQ(end.status, 40);
  EXPECT_NE(end.errors.find("--password-file"), std::string::npos)
      << end.errors;
  EXPECT_EQ(controller.counters().requests, 0U);
}

TEST_F(ProgramConnection, OpenPasswordFileIsRefusedWithTheRemedy) {
  const std::string file =
      home.write("pw", kPassword, std::filesystem::perms(0644));
  const ProgramEnd end = run(trustingLogin({"--password-file", file}));
  EXPECT_EQ(end.status, 10);
  EXPECT_NE(end.errors.find("chmod 600 " + file), std::string::npos)
      << end.errors;
}

TEST_F(ProgramConnection, WrongPasswordIsTriedOnceAndNotRepeatedAnywhere) {
  setPassword("hunter2-hunter2");
  const ProgramEnd end = run(trustingLogin({"--log-level", "4"}));
  EXPECT_EQ(end.status, 12);
  EXPECT_EQ(controller.counters().loginsRefused, 1U);
  EXPECT_EQ(end.errors.find("hunter2"), std::string::npos) << end.errors;
  EXPECT_EQ(log().find("hunter2"), std::string::npos);
}

TEST_F(ProgramConnection, PasswordIsNotLogged) {
  setPassword(kPassword);
  run(trustingLogin({"--log-level", "4"}));
  EXPECT_NE(log().find("BRIVEL_PASSWORD"), std::string::npos);
  EXPECT_EQ(log().find(kPassword), std::string::npos);
}

TEST_F(ProgramConnection, KeysOfTheConnectionAreNotWritten) {
  setPassword(kPassword);
  const std::string keys = home.at("keys");
  options.environment.push_back("SSLKEYLOGFILE=" + keys);
  EXPECT_EQ(run(trustingLogin()).status, 0);
  EXPECT_FALSE(std::filesystem::exists(keys));
}

TEST_F(ProgramConnection, UnknownCertificateIsRefused) {
  setPassword(kPassword);
  const ProgramEnd end = run(login({}));
  EXPECT_EQ(end.status, 36);
  EXPECT_EQ(end.output.rfind("reached 36", 0), 0U);
  EXPECT_EQ(controller.counters().sessionsCreated, 0U);
}

TEST_F(ProgramConnection, PinnedKeyIsTrusted) {
  setPassword(kPassword);
  EXPECT_EQ(run(login({"--pin", controller.ready().pin})).status, 0);
}

TEST_F(ProgramConnection, OtherPinIsRefused) {
  setPassword(kPassword);
  const std::string pin = "sha256//" + std::string(43, 'A') + "=";
  EXPECT_EQ(run(login({"--pin", pin})).status, 36);
}

TEST_F(ProgramConnection, InsecurityWarnsOnEveryRun) {
  setPassword(kPassword);
  const ProgramEnd end = run(login({"--insecure"}));
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.errors, "brivel: warning: the certificate of " +
                            controller.https() +
                            " is not checked (insecure)\n");
}

TEST_F(ProgramConnection, StatsTellWhatTheRunCost) {
  setPassword(kPassword);
  const ProgramEnd end = run(trustingLogin({"--stats"}));
  EXPECT_EQ(end.errors.rfind("brivel: " + controller.https() +
                                 ": 1 login, 10 requests (at most ",
                             0),
            0U)
      << end.errors;
}

TEST_F(ProgramConnection, InterruptedRunLogsOut) {
  setPassword(kPassword);
  std::vector<std::string> arguments = trustingLogin();
  arguments.back() = "306";
  EXPECT_EQ(run(arguments).status, 130);
  EXPECT_EQ(controller.counters().sessionsDeleted, 1U);
}

TEST_F(ProgramConnection, OlderControllerIsReached) {
  const std::string faults =
      home.write("faults.json", R"({"ipmi": {"channel": "2.0"}})");
  const bmc::Controller older(
      {"--tree", SAMPLES "/rack-server", "--faults", faults});
  ASSERT_TRUE(older.running());
  // Nobody listens at the first port of all.
  writeSettings("[targets.old]\naddress = '127.0.0.1:1'\nipmi-port = " +
                std::to_string(older.ready().ipmiPort) + "\n");
  const ProgramEnd end = run({"--bmc", "old", "sample", "301"});
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_EQ(older.counters().datagrams, 1U);
}

class ProgramSlowConnection : public ProgramFixture {
 protected:
  ProgramSlowConnection() { EXPECT_TRUE(controller.running()); }

  bmc::Controller controller{
      {"--tree", SAMPLES "/two-node", "--delay-ms", "400"}};
};

TEST_F(ProgramSlowConnection, ProgressIsDrawnAndWipedOnATerminal) {
  writeSettings("[inband]\nsource = 'http://admin@" + controller.http() +
                "'\n");
  options.environment.push_back(std::string("BRIVEL_PASSWORD=") + kPassword);
  if (!support::hasTerminals()) {
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  }
  options.terminal = true;
  support::ChildProcess child(started({"sample", "300"}));
  EXPECT_EQ(child.wait().status, 0) << child.errors();
  const std::string shown = child.errors();
  EXPECT_NE(shown.find(" resources, 1 s\x1b[K"), std::string::npos) << shown;
  constexpr std::size_t kWipe = 4;
  ASSERT_GE(shown.size(), kWipe);
  EXPECT_EQ(shown.substr(shown.size() - kWipe), "\r\x1b[K");
}

TEST_F(ProgramSlowConnection, ProgressIsNotDrawnElsewhere) {
  writeSettings("[inband]\nsource = 'http://admin@" + controller.http() +
                "'\n");
  options.environment.push_back(std::string("BRIVEL_PASSWORD=") + kPassword);
  EXPECT_EQ(run({"sample", "300"}).errors, "");
}

TEST_F(ProgramSlowConnection, DeadlineEndsTheRun) {
  options.environment.push_back(std::string("BRIVEL_PASSWORD=") + kPassword);
  const ProgramEnd end =
      run({"--deadline", "0.2", "--bmc", "http://admin@" + controller.http(),
           "sample", "301"});
  EXPECT_EQ(end.status, 18) << end.errors;
}

TEST_F(ProgramSlowConnection, InterruptEndsAWait) {
  const bmc::Controller silent(
      {"--tree", SAMPLES "/two-node", "--delay-ms", "30000"});
  ASSERT_TRUE(silent.running());
  support::ChildProcess child(
      started({"--bmc", "http://" + silent.http(), "sample", "301"}));
  while (silent.counters().openRequests == 0) {
    ASSERT_EQ(child.waitFor(std::chrono::milliseconds(10)), std::nullopt)
        << child.errors();
  }
  child.signal(SIGTERM);
  EXPECT_EQ(child.wait().status, 130);
  EXPECT_EQ(child.errors(), "brivel: interrupted\n");
}

// The key is shown to anybody: no password is asked for, nobody logs in.
TEST_F(ProgramConnection, PinShowsTheKeyAsLinesForTheSettings) {
  writeSettings("[targets.n3]\naddress = 'admin@" + controller.https() +
                "'\ninsecure = true\n");
  const ProgramEnd end = run({"pin", "n3"});
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_EQ(end.errors, "");
  EXPECT_NE(end.output.find("# Nobody has verified these keys"),
            std::string::npos);
  EXPECT_NE(
      end.output.find("\n[targets.n3]\naddress = \"" + controller.https() +
                      "\"\nuser = \"admin\"\npin = \"" +
                      controller.ready().pin + "\"\n"),
      std::string::npos)
      << end.output;
  EXPECT_EQ(controller.counters().sessionsCreated, 0U);

  // They are lines for the settings, and enough to log in by.
  writeSettings(end.output);
  setPassword(kPassword);
  EXPECT_EQ(run({"--bmc", "n3", "sample", "301"}).status, 0);
}

TEST_F(ProgramConnection, PinTellsOfAKeyThatIsNoLongerThePinnedOne) {
  const std::string other = "sha256//" + std::string(43, 'A') + "=";
  writeSettings("[targets.n3]\naddress = '" + controller.https() +
                "'\npin = '" + other + "'\n");
  const ProgramEnd end = run({"pin", "n3", "127.0.0.1:1"});
  EXPECT_EQ(end.status, 13);
  EXPECT_NE(end.output.find(controller.ready().pin), std::string::npos);
  EXPECT_EQ(end.errors,
            "brivel: n3: warning: the settings pin another key, " + other +
                "\nbrivel: 127.0.0.1:1: the connection was refused; check the "
                "port, and that the Redfish service is switched on\n");
}

}  // namespace
