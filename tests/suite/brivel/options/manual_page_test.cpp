// The manual pages against the tables of options.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <string>

#include "suite/brivel/options/options.h"

namespace {

// The options that a page describes: its lines that begin like
// "*-H*, *--bmc* _TARGET_".
std::set<std::string> describedOptions(const std::string& page) {
  std::ifstream lines(std::string(MANUAL_PAGES) + "/" + page);
  std::set<std::string> found;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("*-", 0) == 0) {
      found.insert(line);
    }
  }
  return found;
}

// The line that describes an option, up to its argument.
std::string beginningOf(const brivel::Option& option) {
  return (option.letter == '\0' ? ""
                                : std::string("*-") + option.letter + "*, ") +
         "*" + std::string(option.name) + "*";
}

// That the page describes the options of a table, each with the argument that
// it takes, and nothing else.
template <typename Table>
void expectDescribed(const std::string& page, const Table& options) {
  std::set<std::string> described = describedOptions(page);
  for (const brivel::Option& option : options) {
    const std::string beginning = beginningOf(option);
    const auto line = described.lower_bound(beginning);
    ASSERT_TRUE(line != described.end() && line->rfind(beginning, 0) == 0)
        << page << " does not describe " << option.name;
    EXPECT_EQ(line->size() > beginning.size(), takesArgument(option))
        << page << ": " << *line;
    described.erase(line);
  }
  EXPECT_TRUE(described.empty())
      << page << " describes what is no option: " << *described.begin();
}

TEST(ManualPage, OfTheProgramDescribesTheHostsOptions) {
  brivel::OptionList options = brivel::hostOptions();
  options.erase(std::remove_if(options.begin(), options.end(),
                               [](const brivel::Option& option) {
                                 return option.section ==
                                        brivel::OptionSection::kCommand;
                               }),
                options.end());
  expectDescribed("brivel.1.scd", options);
}

TEST(ManualPage, OfSyshealthDescribesItsOptions) {
  expectDescribed("brivel-syshealth.1.scd", brivel::kItemOptions);
}

TEST(ManualPage, OfTheProgramDescribesTheHostsCommands) {
  std::ifstream page(std::string(MANUAL_PAGES) + "/brivel.1.scd");
  std::set<std::string> lines;
  for (std::string line; std::getline(page, line);) {
    lines.insert(line);
  }
  for (const brivel::HostCommand& command : brivel::kHostCommands) {
    const std::string beginning = "*" + std::string(command.name) + "*";
    const auto line = lines.lower_bound(beginning);
    EXPECT_TRUE(line != lines.end() && line->rfind(beginning, 0) == 0)
        << command.name;
  }
}

}  // namespace
