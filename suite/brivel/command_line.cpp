#include "suite/brivel/command_line.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "suite/args/integer.h"
#include "suite/connection/values.h"
#include "suite/log/escape.h"

namespace brivel {
namespace {

/// What is wrong with the command line; caught where it is parsed.
struct Mistake {
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

/// The options as the parsing library knows them.
struct Options {
  CLI::App app;
  // The library's own help option makes way for ours.
  CLI::Option* noHelp = app.set_help_flag();
  CLI::Option* application = app.add_option("APPLICATION");
  CLI::Option* command = app.add_option("COMMAND");
  CLI::Option* bmc = app.add_option("-H,--bmc");
  CLI::Option* esxi = app.add_option("--esxi");
  CLI::Option* user = app.add_option("-u,--user");
  CLI::Option* passwordFile = app.add_option("--password-file");
  CLI::Option* passwordStdin = app.add_flag("--password-stdin");
  CLI::Option* caFile = app.add_option("--cacert");
  CLI::Option* pin = app.add_option("--pin");
  CLI::Option* insecure = app.add_flag("-k,--insecure");
  CLI::Option* timeout = app.add_option("--timeout");
  CLI::Option* deadline = app.add_option("--deadline");
  CLI::Option* maxConnections = app.add_option("--max-connections");
  CLI::Option* thorough = app.add_flag("--thorough");
  CLI::Option* config = app.add_option("--config");
  CLI::Option* logFile = app.add_option("--log-file");
  CLI::Option* logLevel = app.add_option("--log-level");
  CLI::Option* stats = app.add_flag("--stats");
  CLI::Option* device = app.add_option("--device");
  CLI::Option* node = app.add_option("--node");
  CLI::Option* help = app.add_flag("-h,--help");
  CLI::Option* version = app.add_flag("--version");

  Options() {
    app.allow_extras();
    // A slash begins a path, on Windows as well.
    app.allow_windows_style_options(false);
    for (CLI::Option* option : app.get_options()) {
      // Repetitions are told with words of our own.
      option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    }
  }
};

/// An option's name as it is written, "--bmc".
std::string nameOf(const CLI::Option* option) {
  return option->get_positional() ? option->get_name()
                                  : "--" + option->get_lnames().front();
}

/// The text of an option; nothing when it is not given.
std::optional<std::string> textOf(const CLI::Option* option) {
  const std::vector<std::string>& texts = option->results();
  if (texts.empty()) {
    return std::nullopt;
  }
  if (texts.size() > 1) {
    throw Mistake{nameOf(option) + " is given twice"};
  }
  // An option in the place of a value is a value forgotten.
  if (texts.front().rfind("--", 0) == 0) {
    throw Mistake{nameOf(option) + " needs a value"};
  }
  return texts.front();
}

/// The same of an option whose text must not be empty.
std::optional<std::string> filledTextOf(const CLI::Option* option) {
  std::optional<std::string> text = textOf(option);
  if (text && text->empty()) {
    throw Mistake{nameOf(option) + " needs a value"};
  }
  return text;
}

std::optional<int> numberOf(const CLI::Option* option, int least, int most) {
  const std::optional<std::string> text = filledTextOf(option);
  if (!text) {
    return std::nullopt;
  }
  const std::optional<int> number = args::parseInteger(*text);
  if (!number || *number < least || *number > most) {
    throw Mistake{nameOf(option) + ": " + quoted(*text) +
                  " is no number from " + std::to_string(least) + " to " +
                  std::to_string(most)};
  }
  return number;
}

std::optional<std::chrono::milliseconds> secondsOf(const CLI::Option* option) {
  const std::optional<std::string> text = filledTextOf(option);
  if (!text) {
    return std::nullopt;
  }
  const auto limit = connection::timeLimit(*text);
  if (!limit) {
    throw Mistake{nameOf(option) + ": " + quoted(*text) +
                  " is no number of seconds; more than 0, at most 86400"};
  }
  return limit;
}

bool isGiven(const CLI::Option* flag) {
  for (const std::string& value : flag->results()) {
    if (value != "true") {
      throw Mistake{nameOf(flag) + " takes no value"};
    }
  }
  return flag->count() > 0;
}

std::optional<bool> flagOf(const CLI::Option* flag) {
  return isGiven(flag) ? std::optional(true) : std::nullopt;
}

/// Refuses what no option took. A value is not repeated: it may be a password.
void checkExtras(const std::vector<std::string>& extras) {
  // The mark that ends the options is no argument of its own.
  const auto first =
      std::find_if(extras.begin(), extras.end(),
                   [](const std::string& extra) { return extra != "--"; });
  if (first == extras.end()) {
    return;
  }
  const std::string& extra = *first;
  const bool isLong = extra.rfind("--", 0) == 0;
  if (!isLong && extra.rfind('-', 0) != 0) {
    throw Mistake{"one argument too many after APPLICATION and COMMAND"};
  }
  const std::string name =
      isLong ? extra.substr(0, extra.find('=')) : extra.substr(0, 2);
  std::string text = "unknown option " + quoted(name);
  if (name.rfind("--pass", 0) == 0 || name == "-p") {
    text +=
        "; a password is not taken from the command line, where every user of "
        "this machine sees it: use --password-file, --password-stdin, "
        "BRIVEL_PASSWORD or the prompt";
  }
  throw Mistake{text};
}

std::int32_t commandOf(const std::string& text) {
  for (const CommandWord& known : kCommandWords) {
    if (known.word == text) {
      return known.command;
    }
  }
  const std::optional<int> number = args::parseInteger(text);
  if (!number) {
    throw Mistake{quoted(text) +
                  " is no command; known are show, set, or a "
                  "number"};
  }
  return *number;
}

void readTarget(const Options& options, CommandLine& line) {
  const auto bmc = filledTextOf(options.bmc);
  const auto esxi = filledTextOf(options.esxi);
  if (bmc && esxi) {
    throw Mistake{"--bmc and --esxi name two targets; give one of them"};
  }
  line.mode = bmc    ? kConnectModeOutOfBand
              : esxi ? kConnectModeEsxi
                     : kConnectModeInBand;
  line.target.text = bmc ? *bmc : esxi.value_or("");
  line.target.passwordFromStdin = isGiven(options.passwordStdin);

  connection::TargetSettings& given = line.target.given;
  given.user = filledTextOf(options.user);
  given.passwordFile = filledTextOf(options.passwordFile);
  given.caFile = filledTextOf(options.caFile);
  given.pin = filledTextOf(options.pin);
  if (given.pin && !connection::isPin(*given.pin)) {
    throw Mistake{
        "--pin must be sha256// and the digest of a public key in base64"};
  }
  given.insecure = flagOf(options.insecure);
  given.timeout = secondsOf(options.timeout);
  given.deadline = secondsOf(options.deadline);
  given.maxConnections =
      numberOf(options.maxConnections, 1, connection::kMostConnections);
  given.thorough = flagOf(options.thorough);
}

void readApplicationOptions(const Options& options, CommandLine& line) {
  if (const auto device = textOf(options.device)) {
    line.applicationOptions["device"] = *device;
  }
  if (const auto node = textOf(options.node)) {
    if (!args::parseInteger(*node)) {
      throw Mistake{"--node: " + quoted(*node) + " is no number"};
    }
    line.applicationOptions["node"] = *node;
  }
}

/// The arguments in the order that the library's own parsing takes, last one
/// first. "--device=" becomes "--device" and an empty value: the library would
/// take the next argument for the value.
std::vector<std::string> reversed(int argc, const char* const* argv) {
  std::vector<std::string> arguments;
  bool optionsOver = false;
  for (int index = 1; index < argc; ++index) {
    const std::string argument = argv[index];
    optionsOver = optionsOver || argument == "--";
    const bool emptyValue = !optionsOver && argument.rfind("--", 0) == 0 &&
                            argument.find('=') == argument.size() - 1;
    if (emptyValue) {
      arguments.push_back(argument.substr(0, argument.size() - 1));
      arguments.emplace_back();
    } else {
      arguments.push_back(argument);
    }
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

CommandLine readOptions(const Options& options) {
  CommandLine line;
  if (isGiven(options.help)) {
    line.action = CommandLine::Action::kShowHelp;
    return line;
  }
  if (isGiven(options.version)) {
    line.action = CommandLine::Action::kShowVersion;
    return line;
  }
  checkExtras(options.app.remaining());
  const auto application = filledTextOf(options.application);
  if (!application) {
    throw Mistake{"no application is named"};
  }
  line.application = *application;
  if (line.application == kHelpWord) {
    line.action = CommandLine::Action::kShowHelp;
    return line;
  }
  if (line.application == kApplicationList) {
    line.action = CommandLine::Action::kListApplications;
  }
  if (const auto command = filledTextOf(options.command)) {
    line.command = commandOf(*command);
  }
  readTarget(options, line);
  readApplicationOptions(options, line);
  line.settingsFile = filledTextOf(options.config).value_or("");
  line.logFile = filledTextOf(options.logFile).value_or("");
  line.logLevel = numberOf(options.logLevel, 0, connection::kHighestLogLevel);
  line.stats = isGiven(options.stats);
  return line;
}

}  // namespace

std::optional<CommandLine> parseCommandLine(int argc, const char* const* argv,
                                            std::string& error) {
  Options options;
  try {
    options.app.parse(reversed(argc, argv));
    return readOptions(options);
  } catch (const Mistake& mistake) {
    error = mistake.text;
  } catch (const CLI::ArgumentMismatch& failure) {
    // "--node: 1 required missing": the arguments ended behind an option.
    const std::string text = failure.what();
    error = text.substr(0, text.find(':')) + " needs a value";
  } catch (const CLI::ParseError& failure) {
    error = logging::escapeControls(failure.what());
  }
  return std::nullopt;
}

}  // namespace brivel
