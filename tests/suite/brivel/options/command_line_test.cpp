#include "suite/brivel/options/command_line.h"

#include <gtest/gtest.h>

#include <chrono>
#include <iterator>
#include <string>
#include <vector>

namespace {

using brivel::CommandLine;
using brivel::CommandLineStart;
using brivel::parseCommandLine;

// The options of an application that registers none of its own.
const brivel::OptionList kItems(std::begin(brivel::kItemOptions),
                                std::end(brivel::kItemOptions));

// Reads a command line in two steps, as the host does.
base::Result<CommandLine> parse(const std::vector<std::string>& arguments) {
  std::vector<const char*> pointers = {"brivel"};
  for (const std::string& argument : arguments) {
    pointers.push_back(argument.c_str());
  }
  const int count = static_cast<int>(pointers.size());
  const auto start = brivel::readCommandLineStart(count, pointers.data());
  if (!start) {
    return start.error();
  }
  if (start->application.empty()) {
    return base::Failure();
  }
  const brivel::HostCommand* const command =
      brivel::findHostCommand(start->application);
  return command == nullptr
             ? parseCommandLine(count, pointers.data(), kItems)
             : brivel::parseHostCommandLine(count, pointers.data(), *command);
}

CommandLineStart startOf(const std::vector<std::string>& arguments) {
  std::vector<const char*> pointers = {"brivel"};
  for (const std::string& argument : arguments) {
    pointers.push_back(argument.c_str());
  }
  const auto start = brivel::readCommandLineStart(
      static_cast<int>(pointers.size()), pointers.data());
  EXPECT_TRUE(start) << start.error().cause;
  return start ? *start : CommandLineStart();
}

CommandLine parsed(const std::vector<std::string>& arguments) {
  const auto line = parse(arguments);
  EXPECT_TRUE(line) << line.error().cause;
  return line ? *line : CommandLine();
}

std::string errorOf(const std::vector<std::string>& arguments) {
  const auto line = parse(arguments);
  EXPECT_FALSE(line);
  return line ? "" : line.error().cause;
}

std::string option(const CommandLine& line, const std::string& name) {
  const auto found = line.applicationOptions.find(name);
  return found == line.applicationOptions.end() ? "(absent)" : found->second;
}

TEST(CommandLineApplication, AloneMeansShowInBand) {
  const CommandLine line = parsed({"syshealth"});
  EXPECT_EQ(line.action, CommandLine::Action::kRun);
  EXPECT_EQ(line.application, "syshealth");
  EXPECT_EQ(line.command, 1);
  EXPECT_EQ(line.mode, kConnectModeInBand);
  EXPECT_TRUE(line.applicationOptions.empty());
}

TEST(CommandLineStart, NamesTheApplication) {
  EXPECT_TRUE(startOf({}).empty);
  EXPECT_EQ(startOf({"--bmc", "a"}).application, "");
  EXPECT_FALSE(startOf({"--bmc", "a"}).empty);
  EXPECT_EQ(startOf({"--bmc", "a", "syshealth"}).application, "syshealth");
  EXPECT_EQ(startOf({"--device=fan", "syshealth"}).application, "syshealth");
  EXPECT_EQ(startOf({"export", "--format", "json"}).application, "export");
  EXPECT_EQ(startOf({"--", "syshealth"}).application, "syshealth");
  EXPECT_EQ(errorOf({""}), "APPLICATION needs a value");
}

TEST(CommandLineStart, KnowsACommandRightBehindTheApplication) {
  EXPECT_EQ(startOf({"syshealth", "17"}).command, 17);
  EXPECT_EQ(startOf({"syshealth", "-1"}).command, -1);
  EXPECT_EQ(startOf({"syshealth", "--stats", "17"}).command, 1);
  EXPECT_EQ(startOf({"syshealth", "list"}).command, 1);
}

TEST(CommandLineHost, CommandsTakeNoOptionsOfTheTarget) {
  EXPECT_EQ(parsed({"applications"}).application, "applications");
  EXPECT_EQ(parsed({"help", "syshealth"}).arguments,
            std::vector<std::string>{"syshealth"});
  EXPECT_EQ(errorOf({"applications", "--device", "all"}),
            "'applications' takes no --device");
  EXPECT_EQ(errorOf({"--bmc", "a", "applications"}),
            "'applications' takes no --bmc");
  EXPECT_EQ(errorOf({"applications", "all"}),
            "one argument too many after 'applications'");
  EXPECT_EQ(parsed({"applications", "--log-level", "0"}).logLevel, 0);
}

TEST(CommandLineCommand, WordsHaveNumbers) {
  EXPECT_EQ(parsed({"syshealth", "show"}).command, 1);
  EXPECT_EQ(parsed({"syshealth", "set"}).command, 2);
}

TEST(CommandLineCommand, NumberIsTakenAsItIs) {
  EXPECT_EQ(parsed({"syshealth", "17"}).command, 17);
  EXPECT_EQ(parsed({"syshealth", "-1"}).command, -1);
  EXPECT_EQ(parsed({"syshealth", "--", "-1"}).command, -1);
}

TEST(CommandLineCommand, UnknownWordIsNamed) {
  EXPECT_EQ(errorOf({"syshealth", "list"}),
            "'list' is no command; known are show, or a number");
  EXPECT_NE(errorOf({"syshealth", "99999999999"}), "");
}

TEST(CommandLineCommand, FurtherArgumentsAreRefusedUnseen) {
  EXPECT_EQ(errorOf({"syshealth", "show", "hunter2"}),
            "one argument too many after APPLICATION and COMMAND");
}

TEST(CommandLineDevice, AnyTextReachesTheApplication) {
  EXPECT_EQ(option(parsed({"syshealth", "--device", "fan, dimm"}), "device"),
            "fan, dimm");
  EXPECT_EQ(option(parsed({"syshealth", "--device=all"}), "device"), "all");
  EXPECT_EQ(option(parsed({"syshealth"}), "device"), "(absent)");
}

TEST(CommandLineDevice, EmptyTextReachesTheApplication) {
  EXPECT_EQ(option(parsed({"syshealth", "--device", ""}), "device"), "");
  EXPECT_EQ(option(parsed({"syshealth", "--device="}), "device"), "");
}

TEST(CommandLineDevice, EmptyTextTakesNoOtherArgument) {
  const CommandLine line = parsed({"syshealth", "--device=", "--node", "2"});
  EXPECT_EQ(option(line, "device"), "");
  EXPECT_EQ(option(line, "node"), "2");
}

TEST(CommandLineDevice, ForgottenValueIsTold) {
  EXPECT_EQ(errorOf({"syshealth", "--device"}), "--device needs a value");
  EXPECT_EQ(errorOf({"syshealth", "--device", "--node", "2"}),
            "--device needs a value");
}

TEST(CommandLineNode, NumbersReachTheApplication) {
  EXPECT_EQ(option(parsed({"syshealth", "--node", "2"}), "node"), "2");
  EXPECT_EQ(option(parsed({"syshealth", "--node", "-1"}), "node"), "-1");
  EXPECT_EQ(option(parsed({"syshealth", "--node=0"}), "node"), "0");
}

TEST(CommandLineNode, OtherTextIsNamed) {
  EXPECT_EQ(errorOf({"syshealth", "--node", "abc"}),
            "--node: 'abc' is no number");
  EXPECT_EQ(errorOf({"syshealth", "--node", "2147483648"}),
            "--node: '2147483648' is no number");
  EXPECT_EQ(errorOf({"syshealth", "--node="}), "--node needs a value");
}

TEST(CommandLineNode, ControlCharactersAreNotRepeated) {
  EXPECT_EQ(errorOf({"syshealth", "--node", "\x1b[2J"}),
            "--node: '\\x1b[2J' is no number");
}

TEST(CommandLineTarget, SuiteOptionsStandOnEitherSideOfTheApplication) {
  for (const auto& arguments :
       {std::vector<std::string>{"--bmc", "a", "syshealth", "show"},
        std::vector<std::string>{"syshealth", "show", "--bmc", "a"},
        std::vector<std::string>{"syshealth", "-H", "a", "show"},
        std::vector<std::string>{"-Ha", "syshealth"},
        std::vector<std::string>{"--bmc=a", "syshealth"}}) {
    const CommandLine line = parsed(arguments);
    EXPECT_EQ(line.application, "syshealth");
    EXPECT_EQ(line.command, 1);
    EXPECT_EQ(line.mode, kConnectModeOutOfBand);
    EXPECT_EQ(line.target.text, "a");
  }
}

TEST(CommandLineTarget, BracketsStay) {
  EXPECT_EQ(parsed({"--bmc", "[fe80::1]", "syshealth"}).target.text,
            "[fe80::1]");
}

TEST(CommandLineTarget, EsxiHasItsMode) {
  const CommandLine line = parsed({"--esxi", "host", "syshealth"});
  EXPECT_EQ(line.mode, kConnectModeEsxi);
  EXPECT_EQ(line.target.text, "host");
}

TEST(CommandLineTarget, TwoTargetsAreRefused) {
  EXPECT_EQ(errorOf({"--bmc", "a", "--esxi", "b", "syshealth"}),
            "--bmc and --esxi name two targets; give one of them");
  EXPECT_EQ(errorOf({"-H", "a", "--bmc", "b", "syshealth"}),
            "--bmc is given twice");
}

TEST(CommandLineTarget, EmptyTargetIsRefused) {
  EXPECT_EQ(errorOf({"--bmc", "", "syshealth"}), "--bmc needs a value");
}

TEST(CommandLineTarget, ConnectionOptionsAreRead) {
  const std::string pin = "sha256//" + std::string(43, 'A') + "=";
  const CommandLine line = parsed({"syshealth",   "-u",
                                   "admin",       "--password-file",
                                   "pw",          "--password-stdin",
                                   "--cacert",    "ca.pem",
                                   "--pin",       pin,
                                   "-k",          "--timeout",
                                   "2.5",         "--deadline",
                                   "60",          "--max-connections",
                                   "8",           "--thorough",
                                   "--config",    "c.toml",
                                   "--log-file",  "l.log",
                                   "--log-level", "0",
                                   "--stats"});
  const connection::TargetSettings& given = line.target.given;
  EXPECT_EQ(given.user, "admin");
  EXPECT_EQ(given.passwordFile, "pw");
  EXPECT_TRUE(line.target.passwordFromStdin);
  EXPECT_EQ(given.caFile, "ca.pem");
  EXPECT_EQ(given.pin, pin);
  EXPECT_EQ(given.insecure, true);
  EXPECT_EQ(given.timeout, std::chrono::milliseconds(2500));
  EXPECT_EQ(given.deadline, std::chrono::seconds(60));
  EXPECT_EQ(given.maxConnections, 8);
  EXPECT_EQ(given.thorough, true);
  EXPECT_EQ(line.settingsFile, "c.toml");
  EXPECT_EQ(line.logFile, "l.log");
  EXPECT_EQ(line.logLevel, 0);
  EXPECT_TRUE(line.stats);
}

TEST(CommandLineTarget, OptionsThatAreNotGivenSayNothing) {
  const CommandLine line = parsed({"syshealth"});
  EXPECT_FALSE(line.target.given.insecure);
  EXPECT_FALSE(line.target.given.thorough);
  EXPECT_FALSE(line.target.given.timeout);
  EXPECT_FALSE(line.target.passwordFromStdin);
  EXPECT_FALSE(line.logLevel);
  EXPECT_FALSE(line.stats);
}

TEST(CommandLineValues, BeyondTheLimitsAreNamed) {
  EXPECT_EQ(errorOf({"--max-connections", "17", "syshealth"}),
            "--max-connections: '17' is no number from 1 to 16");
  EXPECT_EQ(errorOf({"--log-level", "5", "syshealth"}),
            "--log-level: '5' is no number from 0 to 4");
  EXPECT_EQ(errorOf({"--timeout", "soon", "syshealth"}),
            "--timeout: 'soon' is no number of seconds; more than 0, at most "
            "86400");
  EXPECT_EQ(errorOf({"--pin", "abc", "syshealth"}),
            "--pin must be sha256// and the digest of a public key in base64");
}

TEST(CommandLineFlags, TakeNoValue) {
  EXPECT_EQ(errorOf({"--insecure=no", "syshealth"}),
            "--insecure takes no value");
}

TEST(CommandLineFlags, MayBeRepeated) {
  EXPECT_EQ(parsed({"-k", "-k", "syshealth"}).target.given.insecure, true);
}

TEST(CommandLineUnknownOption, IsNamedWithoutItsValue) {
  EXPECT_EQ(errorOf({"syshealth", "--colour=hunter2"}),
            "unknown option '--colour'");
  EXPECT_EQ(errorOf({"--colour=hunter2", "syshealth"}),
            "unknown option '--colour'");
  EXPECT_EQ(errorOf({"syshealth", "-xhunter2"}), "unknown option '-x'");
}

TEST(CommandLineUnknownOption, PasswordIsShownItsPlacesAndNotRepeated) {
  for (const auto& arguments :
       {std::vector<std::string>{"--password", "hunter2", "syshealth"},
        std::vector<std::string>{"--password=hunter2", "syshealth"},
        std::vector<std::string>{"-phunter2", "syshealth"},
        std::vector<std::string>{"-p", "hunter2", "syshealth"},
        std::vector<std::string>{"syshealth", "-p", "hunter2"}}) {
    const std::string error = errorOf(arguments);
    EXPECT_EQ(error.find("hunter2"), std::string::npos) << error;
    EXPECT_NE(error.find("--password-stdin"), std::string::npos) << error;
  }
}

TEST(CommandLineUnknownOption, IsComparedWithTheKnownOnes) {
  EXPECT_EQ(errorOf({"syshealth", "--divice", "fan"}),
            "unknown option '--divice'; did you mean '--device'?");
  EXPECT_EQ(errorOf({"--timeuot", "2", "syshealth"}),
            "unknown option '--timeuot'; did you mean '--timeout'?");
}

TEST(CommandLineHelp, GoesBeforeMistakes) {
  EXPECT_TRUE(startOf({"--help"}).help);
  EXPECT_TRUE(startOf({"-h"}).help);
  for (const auto& arguments :
       {std::vector<std::string>{"syshealth", "-h"},
        std::vector<std::string>{"-h", "syshealth"},
        std::vector<std::string>{"applications", "--help"},
        std::vector<std::string>{"syshealth", "--nope", "-h"}}) {
    EXPECT_EQ(parsed(arguments).action, CommandLine::Action::kShowHelp);
  }
}

TEST(CommandLineVersion, NeedsNoApplication) {
  EXPECT_TRUE(startOf({"--version"}).version);
  EXPECT_TRUE(startOf({"-V"}).version);
  EXPECT_EQ(parsed({"syshealth", "--version"}).action,
            CommandLine::Action::kShowVersion);
}

}  // namespace
