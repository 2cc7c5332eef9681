#include "suite/brivel/help.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "suite/brivel/options.h"

namespace {

TEST(HelpText, NamesEveryOptionWithItsLetterAndArgument) {
  const std::string help = brivel::helpText();
  for (const brivel::Option& option : brivel::kOptions) {
    std::string names = "  ";
    names += option.letter == '\0' ? "    "
                                   : std::string("-") + option.letter + ", ";
    names += option.name;
    names += takesArgument(option) ? " " + std::string(option.argument) : "";
    EXPECT_NE(help.find("\n" + names + " "), std::string::npos) << names;
  }
}

TEST(HelpText, NamesTheVariableOfThePassword) {
  EXPECT_NE(brivel::helpText().find("BRIVEL_PASSWORD"), std::string::npos);
}

TEST(HelpText, FitsATerminal) {
  std::istringstream lines(brivel::helpText());
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 80U) << line;
    EXPECT_TRUE(line.empty() || line.back() != ' ') << line;
  }
}

TEST(VersionText, NamesProgramAndVersion) {
  EXPECT_EQ(std::string(brivel::versionText()).rfind("brivel ", 0), 0U);
}

}  // namespace
