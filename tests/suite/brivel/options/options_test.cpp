#include "suite/brivel/options/options.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "suite/brivel/options/command_line.h"

namespace {

using brivel::ArgumentKind;
using brivel::Option;

// The options of an application, with those for several targets, and the
// host's.
brivel::OptionList applicationOptions() {
  brivel::OptionList options(std::begin(brivel::kItemOptions),
                             std::end(brivel::kItemOptions));
  options.insert(options.end(), std::begin(brivel::kFleetOptions),
                 std::end(brivel::kFleetOptions));
  return options;
}

const brivel::OptionList kAll = brivel::withHostOptions(applicationOptions());

// What is wrong with a command line; empty if it is understood.
std::string parseError(const std::vector<std::string>& arguments) {
  std::vector<const char*> pointers = {"brivel"};
  for (const std::string& argument : arguments) {
    pointers.push_back(argument.c_str());
  }
  const auto line = brivel::parseCommandLine(
      static_cast<int>(pointers.size()), pointers.data(), applicationOptions());
  EXPECT_TRUE(line || !line.error().cause.empty());
  return line ? "" : line.error().cause;
}

// A value that an option accepts.
std::string goodValue(const Option& option) {
  switch (option.kind) {
    case ArgumentKind::kInteger:
      return "1";
    case ArgumentKind::kSeconds:
      return "2.5";
    case ArgumentKind::kPin:
      return "sha256//" + std::string(43, 'A') + "=";
    default:
      return "text";
  }
}

// What an option is given together with: how several targets are read goes
// with the group that they are of.
std::vector<std::string> companionsOf(const Option& option) {
  const bool reads = option.name == "--fanout" || option.name == "--total";
  return reads ? std::vector<std::string>{"--group", "rack1"}
               : std::vector<std::string>();
}

TEST(Options, HaveNamesAndLettersOfTheirOwn) {
  std::set<std::string> names;
  std::set<char> letters;
  for (const Option& option : brivel::everyOption()) {
    EXPECT_TRUE(names.insert(std::string(option.name)).second) << option.name;
    EXPECT_TRUE(option.letter == '\0' || letters.insert(option.letter).second)
        << option.name;
  }
}

TEST(Options, HaveAnArgumentOrAreFlagsAndAHelpLine) {
  for (const Option& option : kAll) {
    EXPECT_EQ(option.name.substr(0, 2), "--");
    EXPECT_EQ(option.argument.empty(), !takesArgument(option)) << option.name;
    EXPECT_FALSE(option.help.empty()) << option.name;
    EXPECT_EQ(option.help.find('\n'), std::string::npos) << option.name;
  }
}

TEST(Options, AreFoundByNameAndLetter) {
  for (const Option& option : kAll) {
    EXPECT_EQ(brivel::findOption(kAll, option.name), &option);
    EXPECT_EQ(brivel::findOption(kAll, option.letter),
              option.letter == '\0' ? nullptr : &option);
  }
  EXPECT_EQ(brivel::findOption(kAll, "--nothing"), nullptr);
  EXPECT_EQ(brivel::findOption(kAll, '?'), nullptr);
}

TEST(Options, AreUnderstoodOnEitherSideOfTheApplication) {
  for (const Option& option : kAll) {
    const std::string name(option.name);
    std::vector<std::string> given = {name};
    if (takesArgument(option)) {
      given.push_back(goodValue(option));
    }
    const std::vector<std::string> others = companionsOf(option);
    given.insert(given.end(), others.begin(), others.end());
    std::vector<std::string> before = given;
    before.emplace_back("syshealth");
    std::vector<std::string> after = {"syshealth"};
    after.insert(after.end(), given.begin(), given.end());
    EXPECT_EQ(parseError(before), "") << name;
    EXPECT_EQ(parseError(after), "") << name;
    if (option.letter != '\0') {
      after[1] = std::string("-") + option.letter;
      EXPECT_EQ(parseError(after), "") << name;
    }
  }
}

TEST(OptionsThatTakeAValue, NeedIt) {
  for (const Option& option : kAll) {
    if (!takesArgument(option)) {
      continue;
    }
    const std::string name(option.name);
    EXPECT_EQ(parseError({"syshealth", name}), name + " needs a value");
    EXPECT_EQ(parseError({"syshealth", name, "--stats"}),
              name + " needs a value");
    if (option.letter != '\0') {
      EXPECT_EQ(parseError({"syshealth", std::string("-k") + option.letter}),
                name + " needs a value");
    }
    if (!mayBeEmpty(option)) {
      EXPECT_EQ(parseError({"syshealth", name + "="}), name + " needs a value");
    }
  }
}

TEST(OptionsThatTakeAValue, AreGivenOnce) {
  for (const Option& option : kAll) {
    if (takesArgument(option)) {
      const std::string name(option.name);
      EXPECT_EQ(parseError({"syshealth", name, goodValue(option), name,
                            goodValue(option)}),
                name + " is given twice");
    }
  }
}

TEST(OptionsThatTakeAValue, AreCheckedByTheirKind) {
  for (const Option& option : kAll) {
    const std::string name(option.name);
    if (option.kind == ArgumentKind::kInteger ||
        option.kind == ArgumentKind::kSeconds) {
      EXPECT_EQ(parseError({"syshealth", name, "soon"})
                    .rfind(name + ": 'soon' is no number", 0),
                0U);
    }
    if (option.kind == ArgumentKind::kInteger &&
        option.most != brivel::kLargestInteger) {
      EXPECT_NE(
          parseError({"syshealth", name, std::to_string(option.most + 1)}), "");
      EXPECT_NE(
          parseError({"syshealth", name, std::to_string(option.least - 1)}),
          "");
      std::vector<std::string> most = {"syshealth", name,
                                       std::to_string(option.most)};
      const std::vector<std::string> others = companionsOf(option);
      most.insert(most.end(), others.begin(), others.end());
      EXPECT_EQ(parseError(most), "");
    }
    if (option.kind == ArgumentKind::kPin) {
      EXPECT_NE(parseError({"syshealth", name, "soon"}), "");
    }
  }
}

TEST(Flags, TakeNoValueAndMayBeRepeated) {
  for (const Option& option : kAll) {
    const std::string name(option.name);
    if (takesArgument(option) ||
        option.section == brivel::OptionSection::kOther) {
      continue;
    }
    EXPECT_EQ(parseError({"syshealth", name + "=no"}),
              name + " takes no value");
    EXPECT_EQ(parseError({"syshealth", name, name}), "") << name;
  }
}

TEST(OptionConflicts, AreBetweenOptionsOfTheTableAndRefused) {
  for (const brivel::OptionConflict& conflict : brivel::kOptionConflicts) {
    const brivel::OptionList every = brivel::everyOption();
    ASSERT_NE(brivel::findOption(every, conflict.first), nullptr);
    ASSERT_NE(brivel::findOption(every, conflict.second), nullptr);
    if (conflict.second == "--groups") {
      continue;  // Of a command of the host.
    }
    EXPECT_EQ(parseError({"syshealth", std::string(conflict.first), "a",
                          std::string(conflict.second), "b"}),
              conflict.reason);
  }
}

}  // namespace
