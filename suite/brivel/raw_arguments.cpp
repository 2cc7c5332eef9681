#include "suite/brivel/raw_arguments.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>

#include "suite/log/escape.h"

namespace brivel {
namespace {

// clang-format off
// Arguments and options that take a text.
constexpr const char* kTexts[] = {
    "APPLICATION",
    "COMMAND",
    "-H,--bmc",
    "--esxi",
    "--local-root",
    "-u,--user",
    "--password-file",
    "--cacert",
    "--pin",
    "--timeout",
    "--deadline",
    "--max-connections",
    "--config",
    "--log-file",
    "--log-level",
    "--device",
    "--node",
};

constexpr const char* kFlags[] = {
    "--password-stdin",
    "-k,--insecure",
    "--thorough",
    "--stats",
    "-h,--help",
    "--version",
};
// clang-format on

// The arguments in the order that the parsing library takes, last one first.
// "--device=" becomes "--device" and an empty value: the library would take
// the next argument for the value.
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

}  // namespace

std::optional<RawArguments> cutArguments(int argc, const char* const* argv,
                                         std::string& error) {
  CLI::App app;
  // The library's own help makes way for ours.
  app.set_help_flag();
  app.allow_extras();
  for (const char* names : kTexts) {
    app.add_option(names);
  }
  for (const char* names : kFlags) {
    app.add_flag(names);
  }
  for (CLI::Option* option : app.get_options()) {
    // Repetitions are told with words of our own.
    option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  }
  try {
    app.parse(reversed(argc, argv));
  } catch (const CLI::ArgumentMismatch& failure) {
    // "--node: 1 required missing": the arguments ended behind an option.
    const std::string text = failure.what();
    error = text.substr(0, text.find(':')) + " needs a value";
    return std::nullopt;
  } catch (const CLI::ParseError& failure) {
    error = logging::escapeControls(failure.what());
    return std::nullopt;
  }
  RawArguments raw;
  for (const CLI::Option* option : app.get_options()) {
    if (option->count() > 0) {
      raw.options[option->get_positional() ? option->get_name()
                                           : "--" + option->get_lnames()[0]] =
          option->results();
    }
  }
  raw.unknown = app.remaining();
  // The mark that ends the options is no argument of its own.
  const auto mark =
      std::find(raw.unknown.begin(), raw.unknown.end(), std::string("--"));
  if (mark != raw.unknown.end()) {
    raw.unknown.erase(mark);
  }
  return raw;
}

}  // namespace brivel
