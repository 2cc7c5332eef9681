#include "suite/brivel/options/help.h"

#include <algorithm>
#include <string_view>

#include "suite/brivel/options/fold.h"

namespace brivel {
namespace {

constexpr std::size_t kNarrowest = 40;
constexpr std::size_t kHelpColumn = 28;

struct Example {
  const char* command;
  const char* meaning;
};

// What stands above and below the options of a section.
struct SectionTexts {
  OptionSection section;
  const char* above;
  const char* below;
};

// clang-format off
constexpr Example kExamples[] = {
    {"sudo brivel syshealth", "health of this server"},
    {"brivel syshealth --device all --node 2", "tables of its second node"},
    {"brivel --bmc admin@10.0.0.5 syshealth", "another, by its controller"},
    {"brivel --bmc rack1-n3 syshealth --device dimm,fan", "a target of the settings"},
    {"brivel --bmc file:samples/rack-server syshealth", "a recorded server"},
};
constexpr std::size_t kExampleColumn = 53;

constexpr SectionTexts kSections[] = {
    {OptionSection::kTarget, "Target (without one: this server itself):", ""},
    {OptionSection::kLogin, "Login:",
     "Else the environment's BRIVEL_PASSWORD, the settings' password-file, or you are asked. A password is not taken from the command line, where every user of the machine would see it."},
    {OptionSection::kTrust,
     "Trust (by default the certificate must be good, and from an authority that this machine trusts):", ""},
    {OptionSection::kLimits, "Limits:", ""},
    {OptionSection::kFleet, "Several targets, of applications whose help names these options:", ""},
    {OptionSection::kFiles, "Settings and log:", ""},
    {OptionSection::kOther, "Help:", ""},
};

// What the short help shows.
constexpr std::string_view kMostNeeded[] = {
    "--bmc", "--user", "--password-file", "--pin", "--help",
};

constexpr const char* kSummary =
    "brivel - health and hardware inventory of a server, on the console";
constexpr const char* kUsage =
    "Usage: brivel [options] APPLICATION [COMMAND] [application options]";
constexpr const char* kItemsHeading =
    "Options of syshealth, and of every application that names none of its own (without --device it shows a summary):";
constexpr const char* kCommands =
    "COMMAND is show, the default, or a number, which the application gets as it is.";
constexpr const char* kExitStatus =
    "Exit status: 0 success; 1 to 63 the result code; 64 any other result; 2 wrong usage; 3 no such application, or it cannot be loaded; 130 interrupted.";
// clang-format on

std::string paragraph(std::string_view text, std::size_t width,
                      std::size_t indent = 0) {
  return folded(std::string(indent, ' '), text, indent, width);
}

// A row of two columns. A left side that is too long has a line of its own.
std::string row(std::string left, std::string_view right, std::size_t column,
                std::size_t width) {
  // A narrow terminal has room for a narrow left column only.
  column = width < kHelpWidth ? std::min(column, width * 2 / 5) : column;
  std::string above;
  if (left.size() + 1 > column) {
    above = left + "\n";
    left.clear();
  }
  left.resize(column, ' ');
  return above + folded(left, right, column, width);
}

std::string optionRow(const Option& option, std::size_t width) {
  std::string names = option.letter == '\0'
                          ? "      "
                          : std::string("  -") + option.letter + ", ";
  names += option.name;
  if (takesArgument(option)) {
    names += " " + std::string(option.argument);
  }
  return row(names, option.help, kHelpColumn, width);
}

template <typename Table>
std::string optionRows(const Table& options, std::size_t width) {
  std::string rows;
  for (const Option& option : options) {
    rows += optionRow(option, width);
  }
  return rows;
}

std::string examples(std::size_t width) {
  std::string rows;
  for (const Example& example : kExamples) {
    rows += row(std::string("  ") + example.command, example.meaning,
                kExampleColumn, width);
  }
  return rows;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : ", ") + name;
  }
  return text;
}

}  // namespace

std::string shortHelp(const std::vector<std::string>& applications,
                      std::size_t width) {
  width = std::max(width, kNarrowest);
  std::vector<std::string> commands;
  for (const HostCommand& command : kHostCommands) {
    commands.emplace_back(command.name);
  }
  std::string text = paragraph(kUsage, width) + "\n" + examples(width) + "\n";
  text += folded(
      "Applications: ", applications.empty() ? "none" : joined(applications),
      14, width);
  text += folded("Also: ", joined(commands), 6, width) + "\n";
  for (const std::string_view name : kMostNeeded) {
    text += optionRow(*findOption(kOptions, name), width);
  }
  return text + "\n" +
         paragraph(
             "'brivel APPLICATION --help' has the options of an "
             "application, 'brivel help' all of brivel's own.",
             width);
}

std::string applicationHelp(const std::string& application,
                            const args::Specification& specification,
                            const OptionList& options, std::size_t width) {
  width = std::max(width, kNarrowest);
  std::string text =
      paragraph("Usage: brivel [options] " + application + " [COMMAND]" +
                    (options.empty() ? "" : " [application options]"),
                width);
  text += "\n" + paragraph(specification.summary.empty()
                               ? "Without --device it shows a summary."
                               : specification.summary,
                           width);
  if (!options.empty()) {
    text += "\nOptions of " + application + ":\n" + optionRows(options, width);
  }
  return text + "\n" +
         paragraph("'brivel help' lists the options of brivel itself.", width);
}

std::string fullHelp(std::size_t width) {
  width = std::max(width, kNarrowest);
  std::string text = paragraph(kSummary, width) + "\n" +
                     paragraph(kUsage, width) + "\n" + examples(width) + "\n" +
                     paragraph(kCommands, width) + "\nInstead of an " +
                     "application:\n";
  for (const HostCommand& command : kHostCommands) {
    std::string left = "  " + std::string(command.name);
    left += command.arguments.empty() ? "" : " ";
    left += command.arguments;
    text += row(left, command.help, kHelpColumn, width);
  }
  text +=
      "\n" + paragraph(kItemsHeading, width) + optionRows(kItemOptions, width);
  const OptionList options = hostOptions();
  for (const SectionTexts& section : kSections) {
    text += "\n" + paragraph(section.above, width);
    for (const Option& option : options) {
      text += option.section == section.section ? optionRow(option, width) : "";
    }
    if (*section.below != '\0') {
      text += paragraph(section.below, width, 2);
    }
  }
  return text + "\n" + paragraph(kExitStatus, width);
}

}  // namespace brivel
