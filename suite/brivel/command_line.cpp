#include "suite/brivel/command_line.h"

#include <string_view>
#include <vector>

#include "suite/args/integer.h"
#include "suite/brivel/options.h"
#include "suite/brivel/parsed_arguments.h"
#include "suite/connection/values.h"
#include "suite/log/escape.h"

namespace brivel {
namespace {

// A mistake in the command line. Does not leave this file.
struct UsageError {
  std::string text;
};

constexpr const char* kApplicationList = "applications";
constexpr const char* kHelpWord = "help";

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
  return "'" + logging::escapeControls(text) + "'";
}

bool startsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

void checkInteger(const Option& option, const std::string& text) {
  const std::optional<int> value = args::parseInteger(text);
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
  if (startsWith(text, "--") ||
      (text.empty() && option.kind != ArgumentKind::kAnyText)) {
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

// Checks all given options against the table, alone and together.
void checkOptions(const ParsedArguments& arguments) {
  for (const Option& option : kOptions) {
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
    return given ? args::parseInteger(*given) : std::nullopt;
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

// Refuses options that are not in the table, and words beyond the command. A
// value is not repeated: it may be a password.
void checkUnknown(const ParsedArguments& arguments) {
  if (arguments.unknown.empty()) {
    if (arguments.words.size() > 2) {
      throw UsageError{"one argument too many after APPLICATION and COMMAND"};
    }
    return;
  }
  const std::string& argument = arguments.unknown.front();
  const std::string name = startsWith(argument, "--")
                               ? argument.substr(0, argument.find('='))
                               : argument.substr(0, 2);
  std::string text = "unknown option " + quoted(name);
  if (startsWith(name, "--pass") || name == "-p") {
    text +=
        "; a password is not taken from the command line, where every user of "
        "this machine sees it: use --password-file, --password-stdin, "
        "BRIVEL_PASSWORD or the prompt";
  }
  throw UsageError{text};
}

std::int32_t commandOf(const std::string& text) {
  for (const CommandWord& known : kCommandWords) {
    if (known.word == text) {
      return known.command;
    }
  }
  const std::optional<int> number = args::parseInteger(text);
  if (!number) {
    throw UsageError{quoted(text) +
                     " is no command; known are show, set, or a number"};
  }
  return *number;
}

void readTarget(const Values& values, CommandLine& line) {
  const auto bmc = values.text("--bmc");
  const auto esxi = values.text("--esxi");
  line.localRoot = values.text("--local-root").value_or("");
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

// Hands the application its own options, by their names without dashes.
void readApplicationOptions(const Values& values, CommandLine& line) {
  for (const Option& option : kOptions) {
    const auto text = values.text(option.name);
    if (text && option.section == OptionSection::kApplication) {
      line.applicationOptions[std::string(option.name.substr(2))] = *text;
    }
  }
}

CommandLine readCommandLine(const ParsedArguments& arguments) {
  const Values values(arguments);
  CommandLine line;
  if (values.flag("--help")) {
    line.action = CommandLine::Action::kShowHelp;
    return line;
  }
  if (values.flag("--version")) {
    line.action = CommandLine::Action::kShowVersion;
    return line;
  }
  checkUnknown(arguments);
  if (arguments.words.empty()) {
    throw UsageError{"no application is named"};
  }
  line.application = arguments.words.front();
  if (line.application.empty()) {
    throw UsageError{"APPLICATION needs a value"};
  }
  if (line.application == kHelpWord) {
    line.action = CommandLine::Action::kShowHelp;
    return line;
  }
  if (line.application == kApplicationList) {
    line.action = CommandLine::Action::kListApplications;
  }
  if (arguments.words.size() > 1) {
    line.command = commandOf(arguments.words[1]);
  }
  checkOptions(arguments);
  readTarget(values, line);
  readApplicationOptions(values, line);
  line.settingsFile = values.text("--config").value_or("");
  line.logFile = values.text("--log-file").value_or("");
  line.logLevel = values.number("--log-level");
  line.stats = values.flag("--stats").value_or(false);
  return line;
}

}  // namespace

std::optional<CommandLine> parseCommandLine(int argc, const char* const* argv,
                                            std::string& error) {
  const auto arguments = splitArguments(argc, argv, error);
  if (!arguments) {
    return std::nullopt;
  }
  try {
    return readCommandLine(*arguments);
  } catch (const UsageError& usage) {
    error = usage.text;
  }
  return std::nullopt;
}

}  // namespace brivel
