#include "suite/brivel/options/help.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "suite/brivel/options/options.h"

namespace {

// Every line of a help text.
std::vector<std::string> linesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

void expectFolded(const std::string& text, std::size_t width) {
  for (const std::string& line : linesOf(text)) {
    EXPECT_LE(line.size(), width) << line;
    EXPECT_TRUE(line.empty() || line.back() != ' ') << line;
  }
}

TEST(FullHelp, NamesEveryOptionWithItsLetterAndArgument) {
  const std::string help = brivel::fullHelp();
  for (const brivel::Option& option : brivel::everyOption()) {
    if (option.section == brivel::OptionSection::kCommand) {
      continue;  // Stands with the command that takes it.
    }
    std::string names = "  ";
    names += option.letter == '\0' ? "    "
                                   : std::string("-") + option.letter + ", ";
    names += option.name;
    names += takesArgument(option) ? " " + std::string(option.argument) : "";
    EXPECT_NE(help.find("\n" + names + " "), std::string::npos) << names;
  }
}

TEST(FullHelp, NamesEveryCommandOfTheHost) {
  const std::string help = brivel::fullHelp();
  for (const brivel::HostCommand& command : brivel::kHostCommands) {
    EXPECT_NE(help.find("\n  " + std::string(command.name) + " "),
              std::string::npos)
        << command.name;
  }
}

TEST(FullHelp, NamesTheVariableOfThePassword) {
  EXPECT_NE(brivel::fullHelp().find("BRIVEL_PASSWORD"), std::string::npos);
}

TEST(FullHelp, FitsATerminal) {
  expectFolded(brivel::fullHelp(), 80);
  expectFolded(brivel::fullHelp(60), 60);
}

TEST(ShortHelp, FitsOneScreen) {
  const std::string help = brivel::shortHelp({"check", "export", "syshealth"});
  expectFolded(help, 80);
  EXPECT_LE(linesOf(help).size(), 23U);
}

TEST(ShortHelp, NamesTheApplications) {
  EXPECT_NE(brivel::shortHelp({"check", "export"})
                .find("\nApplications: check, export\n"),
            std::string::npos);
  EXPECT_NE(brivel::shortHelp({}).find("\nApplications: none\n"),
            std::string::npos);
}

TEST(ApplicationHelp, HasTheSummaryAndTheOptions) {
  args::Specification specification;
  specification.summary = "Writes JSON.";
  const std::string help = brivel::applicationHelp(
      "export", specification,
      {{"--format", 0, "NAME", brivel::ArgumentKind::kAnyText, 0, 0,
        brivel::OptionSection::kApplication, "json or csv"}});
  EXPECT_NE(help.find("\nWrites JSON.\n"), std::string::npos);
  EXPECT_NE(help.find("\n      --format NAME         json or csv\n"),
            std::string::npos);
  EXPECT_EQ(help.find("--device"), std::string::npos);
}

}  // namespace
