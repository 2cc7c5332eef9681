#include "suite/brivel/parsed_arguments.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <utility>

#include "suite/brivel/options.h"
#include "suite/log/escape.h"

namespace brivel {
namespace {

constexpr const char* kEndOfOptions = "--";
constexpr const char* kWords = "WORDS";

// The arguments in the order that the parsing library takes, last one first.
// "--device=" becomes "--device" and an empty value: the library would take
// the next argument for the value.
std::vector<std::string> reversed(int argc, const char* const* argv) {
  std::vector<std::string> arguments;
  bool optionsOver = false;
  for (int index = 1; index < argc; ++index) {
    const std::string argument = argv[index];
    optionsOver = optionsOver || argument == kEndOfOptions;
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

// The names of an option as the parsing library takes them: "-H,--bmc".
std::string parserNames(const Option& option) {
  std::string names(option.name);
  if (option.letter != '\0') {
    names = std::string("-") + option.letter + "," + names;
  }
  return names;
}

// The option that an argument names: "--bmc", "-H", or "-kH", whose last
// letter is the one that waits for a value. Null when it names none.
const Option* namedOption(const std::string& argument) {
  return argument.rfind("--", 0) == 0 ? findOption(argument)
         : argument.empty()           ? nullptr
                                      : findOption(argument.back());
}

}  // namespace

std::optional<ParsedArguments> splitArguments(int argc, const char* const* argv,
                                              std::string& error) {
  CLI::App app;
  // The library's own help makes way for ours.
  app.set_help_flag();
  app.allow_extras();
  std::vector<std::pair<const Option*, CLI::Option*>> added;
  for (const Option& option : kOptions) {
    CLI::Option* const parser = takesArgument(option)
                                    ? app.add_option(parserNames(option))
                                    : app.add_flag(parserNames(option));
    // Repetitions are reported in our own words.
    parser->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    added.emplace_back(&option, parser);
  }
  CLI::Option* const words = app.add_option(kWords)->expected(-1);
  words->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  try {
    app.parse(reversed(argc, argv));
  } catch (const CLI::ArgumentMismatch&) {
    const Option* const last = namedOption(argv[argc - 1]);
    error = (last == nullptr ? logging::escapeControls(argv[argc - 1])
                             : std::string(last->name)) +
            " needs a value";
    return std::nullopt;
  } catch (const CLI::ParseError& failure) {
    error = logging::escapeControls(failure.what());
    return std::nullopt;
  }
  ParsedArguments parsed;
  for (const auto& [option, parser] : added) {
    if (parser->count() > 0) {
      parsed.options[option->name] = parser->results();
    }
  }
  parsed.words = words->results();
  for (std::string& argument : app.remaining()) {
    if (argument != kEndOfOptions) {
      parsed.unknown.push_back(std::move(argument));
    }
  }
  return parsed;
}

}  // namespace brivel
