// The built program on applications with options of their own.

#include <gtest/gtest.h>

#include <string>

#include "tests/suite/brivel/program_fixture.h"

namespace {

class ProgramOptions : public ProgramFixture {
 protected:
  ProgramOptions() { useModules(OPTIONS_MODULES); }
};

TEST_F(ProgramOptions, ReachTheApplication) {
  EXPECT_EQ(run({"printer", "--format", "json", "--all"}).output,
            "command 1 format='json' all='true'\n");
  EXPECT_EQ(run({"--esxi", "a", "printer", "--format=", "--stats"}).output,
            "command 1 format=''\n");
  EXPECT_EQ(run({"printer", "--format", "csv", "show"}).output,
            "command 1 format='csv'\n");
}

TEST_F(ProgramOptions, CommandBehindThemIsRegisteredToo) {
  EXPECT_EQ(run({"printer", "--all", "2"}).status, 4);
  EXPECT_EQ(run({"printer", "--all", "7"}).output, "command 7 all='true'\n");
}

TEST_F(ProgramOptions, OthersAreUnknown) {
  const ProgramEnd end = run({"printer", "--device", "fan"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.errors,
            "brivel: unknown option '--device'\nTry 'brivel --help'.\n");
  EXPECT_EQ(run({"printer", "--fromat", "csv"}).errors,
            "brivel: unknown option '--fromat'; did you mean '--format'?\n"
            "Try 'brivel --help'.\n");
}

TEST_F(ProgramOptions, OfANumberAreChecked) {
  EXPECT_EQ(run({"printer", "--status", "soon"}).errors,
            "brivel: --status: 'soon' is no number\nTry 'brivel --help'.\n");
  EXPECT_EQ(run({"printer", "--status", "13"}).status, 13);
}

TEST_F(ProgramOptions, AreInTheHelpOfTheApplication) {
  const ProgramEnd end = run({"printer", "--help"});
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.output,
            "Usage: brivel [options] printer [COMMAND] [application options]\n"
            "\n"
            "Prints its options.\n"
            "\n"
            "Options of printer:\n"
            "      --format NAME         json or csv\n"
            "      --all                 everything\n"
            "      --status N            how it ends\n"
            "      --fail TEXT           throws it\n"
            "\n"
            "'brivel help' lists the options of brivel itself.\n");
  EXPECT_EQ(run({"help", "printer"}).output, end.output);
}

TEST_F(ProgramOptions, ThatAreTheHostsAreRefused) {
  const ProgramEnd end = run({"thief"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(end.errors, "brivel: " OPTIONS_MODULES
                        "/thief.so cannot be used: its option --bmc is one of "
                        "brivel's own\n");
}

TEST_F(ProgramOptions, ThatAreNotUnderstoodAreRefused) {
  const ProgramEnd end = run({"muddled"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(end.errors, "brivel: " OPTIONS_MODULES
                        "/muddled.so cannot be used: line 2 of its options is "
                        "not understood\n");
}

TEST_F(ProgramOptions, WhatIsLoggedBeforeTheLogIsOpenIsKept) {
  EXPECT_EQ(run({"printer"}).status, 0);
  EXPECT_NE(log().find("the application starts"), std::string::npos);
}

TEST_F(ProgramOptions, PlugInEndsWithItsOwnStatus) {
  const ProgramEnd end = run({"plugin", "--status", "2"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.output, "command 1 status='2'\n");
  EXPECT_EQ(end.errors, "");
}

TEST_F(ProgramOptions, PlugInKnowsNothingWhenTheHostRefuses) {
  const ProgramEnd usage = run({"plugin", "--colour"});
  EXPECT_EQ(usage.status, 3);
  EXPECT_EQ(usage.output, "BRIVEL UNKNOWN - unknown option '--colour'\n");
  const ProgramEnd target = run({"--bmc", "fe80::1", "plugin"});
  EXPECT_EQ(target.status, 3);
  EXPECT_EQ(target.output.rfind("BRIVEL UNKNOWN - ", 0), 0U);
  const ProgramEnd code = run({"plugin", "--status", "13"});
  EXPECT_EQ(code.status, 3);
  EXPECT_EQ(code.output,
            "command 1 status='13'\n"
            "BRIVEL UNKNOWN - result 13: Connection failed.\n");
  writeSettings("[target.a]\n");
  EXPECT_EQ(run({"plugin"}).status, 3);
}

TEST_F(ProgramOptions, PlugInKnowsNothingWhenItFails) {
  const ProgramEnd thrown = run({"plugin", "--fail", "no | luck"});
  EXPECT_EQ(thrown.status, 3);
  EXPECT_EQ(thrown.output.rfind("command 1\nBRIVEL UNKNOWN - result 17: "
                                "Internal error. Cause: the application "
                                "failed: no / luck.",
                                0),
            0U)
      << thrown.output;
  // Statuses are what its run returns: a command that it refuses is no warning.
  const ProgramEnd refused = run({"plugin", "9"});
  EXPECT_EQ(refused.status, 3);
  EXPECT_EQ(refused.output, "BRIVEL UNKNOWN - result 1: Generic Failure.\n");
}

constexpr char kRack[] =
    "[targets.n10]\naddress = 'a'\n[targets.n9]\naddress = 'b'\n"
    "[groups]\nrack1 = ['n10', '*']\nspare = ['n9']\n";

TEST_F(ProgramOptions, TargetsAndGroupsAreListed) {
  writeSettings(kRack);
  EXPECT_EQ(run({"targets"}).output, "n9\nn10\n");
  EXPECT_EQ(run({"targets", "--groups"}).output, "rack1\nspare\n");
  EXPECT_EQ(run({"targets", "--group", "rack1"}).output, "n10\nn9\n");
  const ProgramEnd unknown = run({"targets", "--group", "rak1"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_NE(unknown.errors.find("did you mean 'rack1'?"), std::string::npos);
  writeSettings("[groups]\nrack1 = ['n1']\n");
  EXPECT_EQ(run({"targets"}).status, 2);
}

TEST_F(ProgramOptions, OfSeveralTargetsAreRefusedByAnApplicationOfOne) {
  writeSettings(kRack);
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--group", "rack1", "printer"},
        std::vector<std::string>{"printer", "--group", "rack1"}}) {
    const ProgramEnd end = run(arguments);
    EXPECT_EQ(end.status, 2);
    EXPECT_EQ(end.errors,
              "brivel: --group: 'printer' reads one target in a run; export "
              "reads many, and clush runs this one for each (clush -R exec -w "
              "@brivel:GROUP 'brivel --bmc %h printer')\n"
              "Try 'brivel --help'.\n");
  }
}

}  // namespace
