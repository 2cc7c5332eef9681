#include "suite/brivel/options/parsed_arguments.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <string_view>
#include <utility>

#include "suite/base/text.h"
#include "suite/brivel/options/options.h"

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
const Option* namedOption(const OptionList& options,
                          const std::string& argument) {
  return argument.rfind("--", 0) == 0 ? findOption(options, argument)
         : argument.empty()           ? nullptr
                                      : findOption(options, argument.back());
}

// Whether an argument may name an option: "--bmc", "--bmc=10.0.0.5", a letter
// among others in "-kH", or on Windows "/bmc:10.0.0.5".
bool mayName(const Option& option, std::string_view argument) {
  if (argument.substr(0, 2) == "--") {
    return argument.substr(0, argument.find('=')) == option.name;
  }
  if (argument.substr(0, 1) == "/") {
    return argument.find(option.name.substr(2)) == 1 ||
           (argument.size() > 1 && argument[1] == option.letter);
  }
  return option.letter != '\0' && argument.substr(0, 1) == "-" &&
         argument.find(option.letter) != std::string_view::npos;
}

// A parser for the options of a table that some argument may name, and what it
// finds. The library compares each option with all others: to tell it those
// that cannot be found would cost a fifth of a short run.
class Splitter {
 public:
  Splitter(int argc, const char* const* argv, const OptionList& options)
      : options_(options) {
    // The library's own help makes way for ours.
    app_.set_help_flag();
    app_.allow_extras();
    for (const Option& option : options) {
      if (argc < 2 ||
          std::none_of(argv + 1, argv + argc, [&option](const char* argument) {
            return mayName(option, argument);
          })) {
        continue;
      }
      CLI::Option* const parser = takesArgument(option)
                                      ? app_.add_option(parserNames(option))
                                      : app_.add_flag(parserNames(option));
      // Repetitions are reported in our own words.
      parser->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
      added_.emplace_back(&option, parser);
    }
  }

  CLI::App& app() { return app_; }

  // Splits the arguments. Returns what is wrong with them, such as an option at
  // the end that lacks its value; empty if nothing is.
  std::string split(int argc, const char* const* argv) {
    try {
      app_.parse(reversed(argc, argv));
      return "";
    } catch (const CLI::ArgumentMismatch&) {
      const Option* const last = namedOption(options_, argv[argc - 1]);
      return (last == nullptr ? base::escapeControls(argv[argc - 1])
                              : std::string(last->name)) +
             " needs a value";
    } catch (const CLI::ParseError& failure) {
      return base::escapeControls(failure.what());
    }
  }

  // The options that were given.
  ParsedArguments given() const {
    ParsedArguments parsed;
    for (const auto& [option, parser] : added_) {
      if (parser->count() > 0) {
        parsed.options[option->name] = parser->results();
      }
    }
    return parsed;
  }

  // What no option took, without the mark that ends the options.
  std::vector<std::string> rest() const {
    std::vector<std::string> rest = app_.remaining();
    const auto mark = std::find(rest.begin(), rest.end(), kEndOfOptions);
    if (mark != rest.end()) {
      rest.erase(mark);
    }
    return rest;
  }

 private:
  const OptionList& options_;
  CLI::App app_;
  std::vector<std::pair<const Option*, CLI::Option*>> added_;
};

}  // namespace

base::Result<ParsedArguments> splitArguments(int argc, const char* const* argv,
                                             const OptionList& options) {
  Splitter splitter(argc, argv, options);
  CLI::Option* const words = splitter.app().add_option(kWords)->expected(-1);
  words->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  if (std::string problem = splitter.split(argc, argv); !problem.empty()) {
    return base::usageFailure(std::move(problem));
  }
  ParsedArguments parsed = splitter.given();
  parsed.words = words->results();
  parsed.unknown = splitter.rest();
  return parsed;
}

base::Result<ParsedArguments> splitStart(int argc, const char* const* argv,
                                         const OptionList& options) {
  Splitter splitter(argc, argv, options);
  splitter.app().prefix_command();
  if (std::string problem = splitter.split(argc, argv); !problem.empty()) {
    return base::usageFailure(std::move(problem));
  }
  ParsedArguments parsed = splitter.given();
  std::vector<std::string> rest = splitter.rest();
  const bool unknown =
      !rest.empty() && rest.front().size() > 1 && rest.front().front() == '-';
  (unknown ? parsed.unknown : parsed.words) = std::move(rest);
  return parsed;
}

}  // namespace brivel
