#include "suite/brivel/options/command_line.h"

#include <iterator>
#include <string_view>
#include <vector>

#include "suite/base/ascii.h"
#include "suite/base/numbers.h"
#include "suite/base/suggestion.h"
#include "suite/base/text.h"
#include "suite/brivel/options/options.h"
#include "suite/brivel/options/parsed_arguments.h"
#include "suite/connection/settings/values.h"

namespace brivel {
namespace {

// A mistake in the command line. Does not leave this file.
struct UsageError {
  std::string text;
};

constexpr std::string_view kStandardInput = "-";

struct CommandWord {
  std::string_view word;
  std::int32_t command;
};

// clang-format off
constexpr CommandWord kCommandWords[] = {
    {"show", 1},
    {"set",  2},
};
// clang-format on

std::string quoted(const std::string& text) {
  return "'" + base::escapeControls(text) + "'";
}

void checkInteger(const Option& option, const std::string& text) {
  const std::optional<int> value = base::parseNumber<int>(text);
  if (value && *value >= option.least && *value <= option.most) {
    return;
  }
  std::string error =
      std::string(option.name) + ": " + quoted(text) + " is no number";
  if (option.least != kLeastInteger || option.most != kLargestInteger) {
    error += " from " + std::to_string(option.least) + " to " +
             std::to_string(option.most);
  }
  throw UsageError{error};
}

// Checks one value as the option's row in the table demands.
void checkValue(const Option& option, const std::string& text) {
  const std::string name(option.name);
  // An option in the place of a value means that the value was forgotten.
  if (base::startsWith(text, "--") || (text.empty() && !mayBeEmpty(option))) {
    throw UsageError{name + " needs a value"};
  }
  if (option.kind == ArgumentKind::kInteger) {
    checkInteger(option, text);
  }
  if (option.kind == ArgumentKind::kSeconds && !connection::timeLimit(text)) {
    throw UsageError{name + ": " + quoted(text) +
                     " is no number of seconds; more than 0, at most 86400"};
  }
  if (option.kind == ArgumentKind::kPin && !connection::isPin(text)) {
    throw UsageError{
        name + " must be sha256// and the digest of a public key in base64"};
  }
}

void checkValues(const Option& option, const std::vector<std::string>& texts) {
  const std::string name(option.name);
  if (!takesArgument(option)) {
    for (const std::string& text : texts) {
      if (text != "true") {
        throw UsageError{name + " takes no value"};
      }
    }
    return;
  }
  if (texts.size() > 1) {
    throw UsageError{name + " is given twice"};
  }
  checkValue(option, texts.front());
}

// Checks all given options against their rows, alone and together.
void checkOptions(const ParsedArguments& arguments, const OptionList& options) {
  for (const Option& option : options) {
    const auto given = arguments.options.find(option.name);
    if (given != arguments.options.end()) {
      checkValues(option, given->second);
    }
  }
  for (const OptionConflict& conflict : kOptionConflicts) {
    if (arguments.options.count(conflict.first) > 0 &&
        arguments.options.count(conflict.second) > 0) {
      throw UsageError{std::string(conflict.reason)};
    }
  }
}

// The values of options that have been checked.
class Values {
 public:
  explicit Values(const ParsedArguments& arguments) : arguments_(arguments) {}

  // The text of an option; nullopt if it is not given.
  std::optional<std::string> text(std::string_view name) const {
    const auto found = arguments_.options.find(name);
    return found == arguments_.options.end()
               ? std::nullopt
               : std::optional(found->second.front());
  }

  std::optional<int> number(std::string_view name) const {
    const std::optional<std::string> given = text(name);
    return given ? base::parseNumber<int>(*given) : std::nullopt;
  }

  std::optional<std::chrono::milliseconds> seconds(
      std::string_view name) const {
    const std::optional<std::string> given = text(name);
    return given ? connection::timeLimit(*given) : std::nullopt;
  }

  // True, or nullopt if the flag is not given.
  std::optional<bool> flag(std::string_view name) const {
    return arguments_.options.count(name) > 0 ? std::optional(true)
                                              : std::nullopt;
  }

 private:
  const ParsedArguments& arguments_;
};

constexpr const char* kNoPasswords =
    "; a password is not taken from the command line, where every user of "
    "this machine sees it: use --password-file, --password-stdin, "
    "BRIVEL_PASSWORD or the prompt";

// Refuses an option that is not in the table. Only its name is repeated: what
// stands behind it may be a password.
[[noreturn]] void refuseOption(const std::string& argument,
                               const OptionList& options) {
  const bool isLong = base::startsWith(argument, "--");
  const std::string name =
      isLong ? argument.substr(0, argument.find('=')) : argument.substr(0, 2);
  const std::string text = "unknown option " + quoted(name);
  if (base::startsWith(name, "--pass") || name == "-p") {
    throw UsageError{text + kNoPasswords};
  }
  std::vector<std::string> names;
  for (const Option& option : options) {
    names.emplace_back(option.name);
  }
  throw UsageError{text + (isLong ? base::suggestionFor(name, names) : "")};
}

// Refuses options for several targets where an application reads only one.
void refuseFleet(const ParsedArguments& arguments, const OptionList& options) {
  for (const Option& option : kFleetOptions) {
    const std::string name(option.name);
    const std::string& application = arguments.words.front();
    if (arguments.options.count(option.name) > 0 &&
        findOption(options, option.name) == nullptr) {
      throw UsageError{name + ": " + quoted(application) +
                       " reads one target in a run; export reads many, and "
                       "clush runs this one for each (clush -R exec -w "
                       "@brivel:GROUP 'brivel --bmc %h " +
                       base::escapeControls(application) + "')"};
    }
  }
}

// The number of a command; nullopt if the text is none.
std::optional<std::int32_t> knownCommand(const std::string& text) {
  for (const CommandWord& known : kCommandWords) {
    if (known.word == text) {
      return known.command;
    }
  }
  return base::parseNumber<int>(text);
}

std::int32_t commandOf(const std::string& text) {
  const std::optional<std::int32_t> command = knownCommand(text);
  if (!command) {
    throw UsageError{quoted(text) +
                     " is no command; known are show, or a "
                     "number"};
  }
  return *command;
}

void readTarget(const Values& values, CommandLine& line) {
  const auto bmc = values.text("--bmc");
  const auto esxi = values.text("--esxi");
  line.localRoot = values.text("--local-root").value_or("");
  line.record = values.text("--record").value_or("");
  line.recordRaw = values.flag("--record-raw").value_or(false);
  line.mode = bmc    ? kConnectModeOutOfBand
              : esxi ? kConnectModeEsxi
                     : kConnectModeInBand;
  line.target.text = bmc ? *bmc : esxi.value_or("");
  line.target.passwordFromStdin =
      values.flag("--password-stdin").value_or(false);

  connection::TargetSettings& given = line.target.given;
  given.user = values.text("--user");
  given.passwordFile = values.text("--password-file");
  given.caFile = values.text("--cacert");
  given.pin = values.text("--pin");
  given.insecure = values.flag("--insecure");
  given.timeout = values.seconds("--timeout");
  given.deadline = values.seconds("--deadline");
  given.maxConnections = values.number("--max-connections");
  given.thorough = values.flag("--thorough");
}

void readFleet(const Values& values, CommandLine& line) {
  FleetChoice& fleet = line.fleet;
  fleet.group = values.text("--group").value_or("");
  fleet.targetsFile = values.text("--targets").value_or("");
  fleet.fanout = values.number("--fanout").value_or(fleet.fanout);
  fleet.total = values.seconds("--total");
  if (fleet.targetsFile == kStandardInput && line.target.passwordFromStdin) {
    throw UsageError{
        "the targets and the password cannot both come from standard input"};
  }
  for (const std::string_view name : {"--fanout", "--total"}) {
    if (values.text(name) && !fleet.chosen()) {
      throw UsageError{std::string(name) +
                       " is for several targets; name them by --group or "
                       "--targets"};
    }
  }
}

// The values of the application's own options by their names without dashes.
args::OptionValues applicationValues(const Values& values,
                                     const OptionList& options) {
  args::OptionValues own;
  for (const Option& option : options) {
    const auto text = values.text(option.name);
    if (text && option.section == OptionSection::kApplication) {
      own[std::string(option.name.substr(2))] = *text;
    }
  }
  return own;
}

// Reads help and version, which go before all mistakes, and the files that
// every command takes. Returns false if one of the former is asked for.
bool readCommon(const Values& values, CommandLine& line) {
  if (values.flag("--help") || values.flag("--version")) {
    line.action = values.flag("--help") ? CommandLine::Action::kShowHelp
                                        : CommandLine::Action::kShowVersion;
    return false;
  }
  line.settingsFile = values.text("--config").value_or("");
  line.logFile = values.text("--log-file").value_or("");
  line.logLevel = values.number("--log-level");
  line.stats = values.flag("--stats").value_or(false);
  return true;
}

CommandLine readApplicationLine(const ParsedArguments& arguments,
                                const OptionList& options) {
  const Values values(arguments);
  CommandLine line;
  line.application = arguments.words.front();
  if (!readCommon(values, line)) {
    return line;
  }
  if (!arguments.unknown.empty()) {
    refuseOption(arguments.unknown.front(), options);
  }
  refuseFleet(arguments, options);
  if (arguments.words.size() > 2) {
    throw UsageError{"one argument too many after APPLICATION and COMMAND"};
  }
  if (arguments.words.size() > 1) {
    line.command = commandOf(arguments.words[1]);
  }
  checkOptions(arguments, options);
  readTarget(values, line);
  readFleet(values, line);
  line.applicationOptions = applicationValues(values, options);
  return line;
}

CommandLine readHostLine(const ParsedArguments& arguments,
                         const HostCommand& command) {
  const std::string name(command.name);
  const Values values(arguments);
  CommandLine line;
  line.application = name;
  if (!readCommon(values, line)) {
    return line;
  }
  const OptionList taken = optionsOf(command);
  if (!arguments.unknown.empty()) {
    refuseOption(arguments.unknown.front(), taken);
  }
  for (const auto& [option, texts] : arguments.options) {
    if (findOption(taken, option) == nullptr) {
      throw UsageError{"'" + name + "' takes no " + std::string(option)};
    }
  }
  if (arguments.words.size() > command.mostArguments + 1) {
    throw UsageError{"one argument too many after '" + name + "'"};
  }
  if (arguments.words.size() <= command.leastArguments) {
    throw UsageError{"'" + name + "' needs " + std::string(command.arguments)};
  }
  checkOptions(arguments, taken);
  line.fleet.group = values.text("--group").value_or("");
  line.groups = values.flag("--groups").value_or(false);
  line.target.given.timeout = values.seconds("--timeout");
  line.arguments.assign(arguments.words.begin() + 1, arguments.words.end());
  return line;
}

CommandLineStart readStart(const ParsedArguments& arguments,
                           const OptionList& options) {
  CommandLineStart start;
  start.help = arguments.options.count("--help") > 0;
  start.version = arguments.options.count("--version") > 0;
  start.empty = arguments.options.empty() && arguments.words.empty() &&
                arguments.unknown.empty();
  if (arguments.words.empty() && (start.help || start.version)) {
    return start;
  }
  if (!arguments.unknown.empty()) {
    refuseOption(arguments.unknown.front(), options);
  }
  if (arguments.words.empty()) {
    checkOptions(arguments, options);
    return start;
  }
  start.application = arguments.words.front();
  if (start.application.empty()) {
    throw UsageError{"APPLICATION needs a value"};
  }
  if (arguments.words.size() > 1) {
    start.command = knownCommand(arguments.words[1]).value_or(start.command);
  }
  return start;
}

// Reads a command line that is split, or says why it could not be.
template <typename Read>
auto understood(const base::Result<ParsedArguments>& arguments,
                const Read& read) -> base::Result<decltype(read(*arguments))> {
  if (!arguments) {
    return arguments.error();
  }
  try {
    return read(*arguments);
  } catch (const UsageError& usage) {
    return base::usageFailure(usage.text);
  }
}

}  // namespace

base::Result<CommandLineStart> readCommandLineStart(int argc,
                                                    const char* const* argv) {
  const OptionList options = everyOption();
  return understood(
      splitStart(argc, argv, options),
      [&](const ParsedArguments& start) { return readStart(start, options); });
}

base::Result<CommandLine> parseCommandLine(
    int argc, const char* const* argv, const OptionList& applicationOptions) {
  const OptionList options = withHostOptions(applicationOptions);
  OptionList known = options;
  if (findOption(options, std::begin(kFleetOptions)->name) == nullptr) {
    known.insert(known.end(), std::begin(kFleetOptions),
                 std::end(kFleetOptions));
  }
  return understood(splitArguments(argc, argv, known),
                    [&](const ParsedArguments& arguments) {
                      return readApplicationLine(arguments, options);
                    });
}

base::Result<CommandLine> parseHostCommandLine(int argc,
                                               const char* const* argv,
                                               const HostCommand& command) {
  const OptionList options = everyOption();
  return understood(splitArguments(argc, argv, options),
                    [&](const ParsedArguments& arguments) {
                      return readHostLine(arguments, command);
                    });
}

}  // namespace brivel
