#include "suite/brivel/help.h"

#include <cstddef>
#include <sstream>

#include "suite/brivel/options.h"

namespace brivel {
namespace {

// clang-format off
constexpr const char* kIntroduction =
R"(brivel - health and hardware inventory of a server, on the console

Usage: brivel [options] APPLICATION [COMMAND] [application options]

Examples:
  brivel syshealth                                   health of this server
  brivel syshealth --device all --node 2             tables of its second node
  brivel --bmc admin@10.0.0.5 syshealth              ask a management controller
  brivel --bmc rack1-n3 syshealth --device dimm,fan  a target from the settings
  brivel --bmc file:samples/rack-server syshealth    a recorded server
  brivel applications                                the applications there are

Commands: show (the default), set; a number is taken as it is.
)";

constexpr const char* kExitStatus =
R"(
Exit status: 0 success; 1 to 63 the result code; 64 any other result; 2 wrong
usage; 3 no such application, or it cannot be loaded; 130 interrupted.
)";

// What stands above and below the options of a section.
struct SectionTexts {
  OptionSection section;
  const char* above;
  const char* below;
};

constexpr SectionTexts kSections[] = {
    {OptionSection::kApplication,
R"(The application syshealth, without --device, shows the state of eight categories
and the active events. Its options:
)", ""},
    {OptionSection::kTarget,
     "Target (without one: this server itself):\n", ""},
    {OptionSection::kLogin,
     "Login:\n",
R"(  Else the environment's BRIVEL_PASSWORD, the settings' password-file, or you
  are asked. A password is not taken from the command line, where every user of
  the machine would see it.
)"},
    {OptionSection::kTrust,
R"(Trust (by default the certificate must be good, and from an authority that
this machine trusts):
)", ""},
    {OptionSection::kLimits, "Limits:\n", ""},
    {OptionSection::kFiles, "Settings and log:\n", ""},
    {OptionSection::kOther, "", ""},
};
// clang-format on

constexpr std::size_t kHelpColumn = 28;
constexpr std::size_t kWidth = 78;

// The lines of one option: its names, and its help folded in the right column.
std::string optionLines(const Option& option) {
  std::string line = option.letter == '\0'
                         ? "      "
                         : std::string("  -") + option.letter + ", ";
  line += option.name;
  if (takesArgument(option)) {
    line += " " + std::string(option.argument);
  }
  std::string lines;
  std::istringstream words{std::string(option.help)};
  for (std::string word; words >> word;) {
    if (line.size() >= kHelpColumn && line.size() + 1 + word.size() > kWidth) {
      lines += line + "\n";
      line.clear();
    }
    line += line.size() < kHelpColumn
                ? std::string(kHelpColumn - line.size(), ' ')
                : " ";
    line += word;
  }
  return lines + line + "\n";
}

}  // namespace

std::string helpText() {
  std::string text = kIntroduction;
  for (const SectionTexts& section : kSections) {
    text += std::string("\n") + section.above;
    for (const Option& option : kOptions) {
      if (option.section == section.section) {
        text += optionLines(option);
      }
    }
    text += section.below;
  }
  return text + kExitStatus;
}

const char* versionText() { return "brivel " BRIVEL_VERSION "\n"; }

}  // namespace brivel
