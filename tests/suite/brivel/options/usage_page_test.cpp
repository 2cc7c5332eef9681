// docs/usage.md against the table of options.

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

#include "suite/brivel/options/options.h"

namespace {

// The rows of the page's table of options: "| `-H`, `--bmc TARGET` | ...".
std::set<std::string> documentedOptions() {
  std::ifstream page(USAGE_PAGE);
  std::set<std::string> found;
  const std::string heading = "| option | meaning |";
  std::string line;
  while (std::getline(page, line) && line != heading) {
  }
  while (std::getline(page, line) && !line.empty()) {
    const std::string cell = line.substr(2, line.find(" | ") - 2);
    if (cell.front() == '`') {
      found.insert(cell);
    }
  }
  return found;
}

// The first cell of an option's row.
std::string cellOf(const brivel::Option& option) {
  std::string cell;
  if (option.letter != '\0') {
    cell = std::string("`-") + option.letter + "`, ";
  }
  cell += "`" + std::string(option.name);
  if (takesArgument(option)) {
    cell += " " + std::string(option.argument);
  }
  return cell + "`";
}

TEST(UsagePage, HasARowForEachOptionAndForNothingElse) {
  std::set<std::string> expected;
  for (const brivel::Option& option : brivel::everyOption()) {
    if (option.section != brivel::OptionSection::kCommand) {
      expected.insert(cellOf(option));
    }
  }
  EXPECT_EQ(documentedOptions(), expected);
}

}  // namespace
