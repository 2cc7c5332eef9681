#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <limits>
#include <string_view>
#include <vector>

#include "suite/connection/settings/values.h"

namespace brivel {

// The options of the command line, in one table. The parser, the help, the
// manual, the completion and the tests are made from it: a new option is a new
// row here, and a field of `CommandLine` that holds it.

/// The part of the help that an option belongs to.
enum class OptionSection {
  kApplication,  ///< Options that the application itself asks for.
  kTarget,
  kLogin,
  kTrust,
  kLimits,
  kFleet,    ///< Several targets in one run.
  kCommand,  ///< Options of one command of the host.
  kFiles,    ///< Settings, log and cost of the run.
  kOther,
};

/// What an option takes, and how that is checked.
enum class ArgumentKind {
  kFlag,     ///< Nothing. May be repeated; all other kinds may not.
  kAnyText,  ///< A text, which may be empty.
  kItems,    ///< Items with commas between; the application checks them.
  kText,     ///< A text, as is everything below. None of them may be empty.
  kFile,
  kFolder,
  kTarget,   ///< An address or the name of a target in the settings.
  kGroup,    ///< The name of a group in the settings.
  kInteger,  ///< A whole number from `least` to `most`.
  kSeconds,  ///< See `connection::timeLimit`.
  kPin,      ///< See `connection::isPin`.
};

/// One option.
struct Option {
  std::string_view name;      ///< Long name with its dashes.
  char letter;                ///< Short name without its dash; 0: none.
  std::string_view argument;  ///< How the help calls it; empty for a flag.
  ArgumentKind kind;
  int least;  ///< Of kInteger.
  int most;   ///< Of kInteger.
  OptionSection section;
  std::string_view help;  ///< One sentence without line ends.
};

/// Two options that cannot be combined, and why not.
struct OptionConflict {
  std::string_view first;
  std::string_view second;
  std::string_view reason;
};

constexpr std::string_view kOneOrMany =
    "--group and --targets stand for several targets, --bmc, --esxi and "
    "--local-root for one; give one of them";

constexpr int kDefaultFanout = 64;
constexpr int kMostFanout = 512;
constexpr int kLeastInteger = std::numeric_limits<int>::min();
constexpr int kLargestInteger = std::numeric_limits<int>::max();

#ifdef _WIN32
#define BRIVEL_SETTINGS_PLACES \
  R"(%APPDATA%\brivel\brivel.toml, else %ProgramData%\brivel\brivel.toml)"
#define BRIVEL_LOG_PLACE R"(%LOCALAPPDATA%\brivel\brivel.log)"
#else
#define BRIVEL_SETTINGS_PLACES \
  "~/.config/brivel/brivel.toml, else /etc/brivel/brivel.toml"
#define BRIVEL_LOG_PLACE "~/.local/state/brivel/brivel.log"
#endif

// clang-format off
/// The host's options, in the order of the help.
constexpr Option kOptions[] = {
    {"--bmc", 'H', "TARGET", ArgumentKind::kTarget, 0, 0, OptionSection::kTarget,
     "a management controller: a name from the settings, [https://][user@]host[:port], or file:DIR for a recorded server"},
    {"--esxi", 0, "HOST", ArgumentKind::kText, 0, 0, OptionSection::kTarget,
     "a VMware ESXi host (not supported by syshealth)"},
    {"--local-root", 0, "FOLDER", ArgumentKind::kFolder, 0, 0, OptionSection::kTarget,
     "a recorded machine, in the place of this server's own parts; for tests and support"},
    {"--record", 0, "DIR", ArgumentKind::kFolder, 0, 0, OptionSection::kTarget,
     "store what is read in a new folder, masked, for --bmc file:DIR or --local-root DIR"},
    {"--record-raw", 0, "", ArgumentKind::kFlag, 0, 0, OptionSection::kTarget,
     "with --record: store it as it is, with serial numbers, addresses and names"},

    {"--user", 'u', "NAME", ArgumentKind::kText, 0, 0, OptionSection::kLogin,
     "user at the target"},
    {"--password-file", 0, "FILE", ArgumentKind::kFile, 0, 0, OptionSection::kLogin,
     "file with the password in its first line; only you may be able to read it"},
    {"--password-stdin", 0, "", ArgumentKind::kFlag, 0, 0, OptionSection::kLogin,
     "the password is the first line of standard input"},

    {"--cacert", 0, "FILE", ArgumentKind::kFile, 0, 0, OptionSection::kTrust,
     "authorities to trust instead, PEM"},
    {"--pin", 0, "sha256//DIGEST", ArgumentKind::kPin, 0, 0, OptionSection::kTrust,
     "trust the server that has this public key"},
    {"--insecure", 'k', "", ArgumentKind::kFlag, 0, 0, OptionSection::kTrust,
     "trust any certificate; warns on every run"},

    {"--timeout", 0, "SECONDS", ArgumentKind::kSeconds, 0, 0, OptionSection::kLimits,
     "one request (default 30)"},
    {"--deadline", 0, "SECONDS", ArgumentKind::kSeconds, 0, 0, OptionSection::kLimits,
     "the whole run (default 120)"},
    {"--max-connections", 0, "N", ArgumentKind::kInteger, 1, connection::kMostConnections, OptionSection::kLimits,
     "requests in flight, 1 to 16 (default 4)"},
    {"--thorough", 0, "", ArgumentKind::kFlag, 0, 0, OptionSection::kLimits,
     "read every part for the health summary, also where the server says that all is well"},

    {"--config", 0, "FILE", ArgumentKind::kFile, 0, 0, OptionSection::kFiles,
     "settings (default " BRIVEL_SETTINGS_PLACES ")"},
    {"--log-file", 0, "FILE", ArgumentKind::kFile, 0, 0, OptionSection::kFiles,
     "log (default " BRIVEL_LOG_PLACE ")"},
    {"--log-level", 0, "0..4", ArgumentKind::kInteger, 0, connection::kHighestLogLevel, OptionSection::kFiles,
     "0 nothing, 1 errors, 2 warnings, 3 information (the default), 4 everything"},
    {"--stats", 0, "", ArgumentKind::kFlag, 0, 0, OptionSection::kFiles,
     "what the run cost, on standard error"},

    {"--help", 'h', "", ArgumentKind::kFlag, 0, 0, OptionSection::kOther,
     "short help, or that of the application that is named"},
    {"--version", 'V', "", ArgumentKind::kFlag, 0, 0, OptionSection::kOther,
     "the version"},
};

/// The options of an application that registers none of its own.
constexpr Option kItemOptions[] = {
    {"--device", 0, "LIST", ArgumentKind::kItems, 0, 0, OptionSection::kApplication,
     "show tables instead of the summary: system, processor, fan, dimm, power, pci_adapter, several with commas between, or all for the six"},
    {"--node", 0, "N", ArgumentKind::kInteger, kLeastInteger, kLargestInteger, OptionSection::kApplication,
     "on this server: only its node N, counted from 1"},
};

/// The host's options for applications that read several targets in one run.
constexpr Option kFleetOptions[] = {
    {"--group", 0, "NAME", ArgumentKind::kGroup, 0, 0, OptionSection::kFleet,
     "the targets of a group in the settings"},
    {"--targets", 0, "FILE", ArgumentKind::kFile, 0, 0, OptionSection::kFleet,
     "the targets in a file, one a line, as --bmc takes them; - is standard input"},
    {"--fanout", 0, "N", ArgumentKind::kInteger, 1, kMostFanout, OptionSection::kFleet,
     "how many are read at a time, 1 to 512 (default 64)"},
    {"--total", 0, "SECONDS", ArgumentKind::kSeconds, 0, 0, OptionSection::kFleet,
     "the time for all of them; what is not read by then has failed"},
};

/// Options that one command of the host takes, and nothing else.
constexpr Option kCommandOptions[] = {
    {"--groups", 0, "", ArgumentKind::kFlag, 0, 0, OptionSection::kCommand,
     "the names of the groups"},
};

constexpr OptionConflict kOptionConflicts[] = {
    {"--bmc", "--esxi",
     "--bmc and --esxi name two targets; give one of them"},
    {"--local-root", "--bmc",
     "--local-root stands for this server, --bmc and --esxi for others; give one of them"},
    {"--local-root", "--esxi",
     "--local-root stands for this server, --bmc and --esxi for others; give one of them"},
    {"--group", "--targets",
     "--group and --targets both say which targets; give one of them"},
    {"--group", "--groups",
     "--group lists the targets of one group, --groups the groups; give one of them"},
    {"--group", "--bmc", kOneOrMany},
    {"--group", "--esxi", kOneOrMany},
    {"--group", "--local-root", kOneOrMany},
    {"--targets", "--bmc", kOneOrMany},
    {"--targets", "--esxi", kOneOrMany},
    {"--targets", "--local-root", kOneOrMany},
    {"--group", "--record",
     "--record stores what is read of one target; name it by --bmc"},
    {"--targets", "--record",
     "--record stores what is read of one target; name it by --bmc"},
};
// clang-format on

#undef BRIVEL_SETTINGS_PLACES
#undef BRIVEL_LOG_PLACE

/// Whether an option's argument may be the empty text.
constexpr bool mayBeEmpty(const Option& option) {
  return option.kind == ArgumentKind::kAnyText ||
         option.kind == ArgumentKind::kItems;
}

/// Whether an option takes an argument.
constexpr bool takesArgument(const Option& option) {
  return option.kind != ArgumentKind::kFlag;
}

/// Options from one or several tables.
using OptionList = std::vector<Option>;

/// The host's options for every run, and those of an application.
template <typename Table>
OptionList withHostOptions(const Table& applicationOptions) {
  OptionList options(std::begin(applicationOptions),
                     std::end(applicationOptions));
  options.insert(options.end(), std::begin(kOptions), std::end(kOptions));
  return options;
}

/// The option with this long name ("--bmc"); null if there is none.
template <typename Table>
const Option* findOption(const Table& options, std::string_view name) {
  const auto found =
      std::find_if(std::begin(options), std::end(options),
                   [&](const Option& option) { return option.name == name; });
  return found == std::end(options) ? nullptr : &*found;
}

/// The option with this letter; null if there is none.
template <typename Table>
const Option* findOption(const Table& options, char letter) {
  const auto found = std::find_if(
      std::begin(options), std::end(options), [&](const Option& option) {
        return option.letter != '\0' && option.letter == letter;
      });
  return found == std::end(options) ? nullptr : &*found;
}

/// Every option of the host.
OptionList hostOptions();

/// The same, and those of an application that registers none of its own.
OptionList everyOption();

/// A command of the host itself, which runs no application.
struct HostCommand {
  std::string_view name;
  std::string_view arguments;  ///< How the help calls them; may be empty.
  std::size_t leastArguments;
  std::size_t mostArguments;
  /// Options beside those that all of them take; the rest is empty.
  std::array<std::string_view, 2> options;
  std::string_view help;
};

constexpr std::string_view kHelpCommand = "help";
constexpr std::string_view kTargetsCommand = "targets";
constexpr std::string_view kPinCommand = "pin";
constexpr std::size_t kMostPinned = 1000;

// clang-format off
constexpr HostCommand kHostCommands[] = {
    {"applications", "", 0, 0, {}, "the applications, each with number and file"},
    {kTargetsCommand, "[--group NAME | --groups]", 0, 0, {"--group", "--groups"},
     "the targets of the settings, or of a group there; or the groups"},
    {kPinCommand, "TARGET...", 1, kMostPinned, {"--timeout"},
     "the keys that controllers show, as lines for the settings; nothing verifies them"},
    {kHelpCommand, "[APPLICATION]", 0, 1, {}, "all options, or those of an application"},
};
// clang-format on

/// The host's command of this name; null if there is none.
const HostCommand* findHostCommand(std::string_view name);

/// The options that a command of the host takes.
OptionList optionsOf(const HostCommand& command);

}  // namespace brivel
