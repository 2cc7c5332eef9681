#include "suite/brivel/command_line.h"

#include <string_view>
#include <vector>

#include "suite/args/integer.h"
#include "suite/brivel/raw_arguments.h"
#include "suite/connection/values.h"
#include "suite/log/escape.h"

namespace brivel {
namespace {

// What is wrong with the command line; caught where it is parsed.
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

// The values of the options, each checked as it is taken out.
class Values {
 public:
  explicit Values(const RawArguments& raw) : raw_(raw) {}

  // The text of an option; nothing when it is not given.
  std::optional<std::string> text(const std::string& name) const {
    const auto found = raw_.options.find(name);
    if (found == raw_.options.end()) {
      return std::nullopt;
    }
    if (found->second.size() > 1) {
      throw Mistake{name + " is given twice"};
    }
    // An option in the place of a value is a value forgotten.
    if (found->second.front().rfind("--", 0) == 0) {
      throw Mistake{name + " needs a value"};
    }
    return found->second.front();
  }

  // The same of an option whose text must not be empty.
  std::optional<std::string> filledText(const std::string& name) const {
    std::optional<std::string> given = text(name);
    if (given && given->empty()) {
      throw Mistake{name + " needs a value"};
    }
    return given;
  }

  std::optional<int> number(const std::string& name, int least,
                            int most) const {
    const std::optional<std::string> given = filledText(name);
    if (!given) {
      return std::nullopt;
    }
    const std::optional<int> value = args::parseInteger(*given);
    if (!value || *value < least || *value > most) {
      throw Mistake{name + ": " + quoted(*given) + " is no number from " +
                    std::to_string(least) + " to " + std::to_string(most)};
    }
    return value;
  }

  std::optional<std::chrono::milliseconds> seconds(
      const std::string& name) const {
    const std::optional<std::string> given = filledText(name);
    if (!given) {
      return std::nullopt;
    }
    const auto limit = connection::timeLimit(*given);
    if (!limit) {
      throw Mistake{name + ": " + quoted(*given) +
                    " is no number of seconds; more than 0, at most 86400"};
    }
    return limit;
  }

  // True, or nothing when the flag is not given.
  std::optional<bool> flag(const std::string& name) const {
    const auto found = raw_.options.find(name);
    if (found == raw_.options.end()) {
      return std::nullopt;
    }
    for (const std::string& value : found->second) {
      if (value != "true") {
        throw Mistake{name + " takes no value"};
      }
    }
    return true;
  }

 private:
  const RawArguments& raw_;
};

// Refuses what no option took. A value is not repeated: it may be a password.
void checkUnknown(const std::vector<std::string>& unknown) {
  if (unknown.empty()) {
    return;
  }
  const std::string& argument = unknown.front();
  const bool isLong = argument.rfind("--", 0) == 0;
  if (!isLong && argument.rfind('-', 0) != 0) {
    throw Mistake{"one argument too many after APPLICATION and COMMAND"};
  }
  const std::string name =
      isLong ? argument.substr(0, argument.find('=')) : argument.substr(0, 2);
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
                  " is no command; known are show, set, or a number"};
  }
  return *number;
}

void readTarget(const Values& values, CommandLine& line) {
  const auto bmc = values.filledText("--bmc");
  const auto esxi = values.filledText("--esxi");
  if (bmc && esxi) {
    throw Mistake{"--bmc and --esxi name two targets; give one of them"};
  }
  line.localRoot = values.filledText("--local-root").value_or("");
  if (!line.localRoot.empty() && (bmc || esxi)) {
    throw Mistake{
        "--local-root stands for this server, --bmc and --esxi for "
        "others; give one of them"};
  }
  line.mode = bmc    ? kConnectModeOutOfBand
              : esxi ? kConnectModeEsxi
                     : kConnectModeInBand;
  line.target.text = bmc ? *bmc : esxi.value_or("");
  line.target.passwordFromStdin =
      values.flag("--password-stdin").value_or(false);

  connection::TargetSettings& given = line.target.given;
  given.user = values.filledText("--user");
  given.passwordFile = values.filledText("--password-file");
  given.caFile = values.filledText("--cacert");
  given.pin = values.filledText("--pin");
  if (given.pin && !connection::isPin(*given.pin)) {
    throw Mistake{
        "--pin must be sha256// and the digest of a public key in base64"};
  }
  given.insecure = values.flag("--insecure");
  given.timeout = values.seconds("--timeout");
  given.deadline = values.seconds("--deadline");
  given.maxConnections =
      values.number("--max-connections", 1, connection::kMostConnections);
  given.thorough = values.flag("--thorough");
}

void readApplicationOptions(const Values& values, CommandLine& line) {
  if (const auto device = values.text("--device")) {
    line.applicationOptions["device"] = *device;
  }
  if (const auto node = values.text("--node")) {
    if (!args::parseInteger(*node)) {
      throw Mistake{"--node: " + quoted(*node) + " is no number"};
    }
    line.applicationOptions["node"] = *node;
  }
}

CommandLine readCommandLine(const RawArguments& raw) {
  const Values values(raw);
  CommandLine line;
  if (values.flag("--help")) {
    line.action = CommandLine::Action::kShowHelp;
    return line;
  }
  if (values.flag("--version")) {
    line.action = CommandLine::Action::kShowVersion;
    return line;
  }
  checkUnknown(raw.unknown);
  const auto application = values.filledText("APPLICATION");
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
  if (const auto command = values.filledText("COMMAND")) {
    line.command = commandOf(*command);
  }
  readTarget(values, line);
  readApplicationOptions(values, line);
  line.settingsFile = values.filledText("--config").value_or("");
  line.logFile = values.filledText("--log-file").value_or("");
  line.logLevel = values.number("--log-level", 0, connection::kHighestLogLevel);
  line.stats = values.flag("--stats").value_or(false);
  return line;
}

}  // namespace

std::optional<CommandLine> parseCommandLine(int argc, const char* const* argv,
                                            std::string& error) {
  const std::optional<RawArguments> raw = cutArguments(argc, argv, error);
  if (!raw) {
    return std::nullopt;
  }
  try {
    return readCommandLine(*raw);
  } catch (const Mistake& mistake) {
    error = mistake.text;
  }
  return std::nullopt;
}

}  // namespace brivel
