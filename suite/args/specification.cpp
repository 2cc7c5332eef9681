#include "suite/args/specification.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "suite/base/ascii.h"

namespace args {
namespace {

constexpr std::string_view kDashes = "--";

bool isName(std::string_view name) {
  return name.size() > kDashes.size() && name[kDashes.size()] != '-' &&
         std::all_of(name.begin() + kDashes.size(), name.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
         });
}

// Cuts off the text before the first blank.
std::string_view takeWord(std::string_view& text) {
  const std::size_t end = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  return word;
}

// Reads "--name", "--name WORD" and the help behind either.
std::optional<ApplicationOption> readOption(std::string_view line) {
  ApplicationOption option;
  option.name = takeWord(line);
  if (!isName(option.name)) {
    return std::nullopt;
  }
  const bool hasArgument = line.size() > 1 && line[0] == ' ' && line[1] != ' ';
  if (hasArgument) {
    line.remove_prefix(1);
    option.argument = takeWord(line);
    if (line.size() > 1 && line[1] != ' ') {
      return std::nullopt;
    }
  }
  option.help = base::trimmed(line);
  return option;
}

// Adds one line to what is understood so far. Returns what is wrong with it, or
// an empty text.
std::string addLine(std::string_view line, Specification& specification) {
  const std::string_view text = base::trimmed(line);
  if (base::startsWith(text, kDashes)) {
    auto option = readOption(text);
    if (!option) {
      return "is no option";
    }
    for (const ApplicationOption& other : specification.options) {
      if (other.name == option->name) {
        return "repeats the option " + other.name;
      }
    }
    specification.options.push_back(*std::move(option));
  } else if (text == "exit: plug-in") {
    specification.plugInExit = true;
  } else if (text == "targets: many") {
    specification.manyTargets = true;
  } else if (base::trimmed(line.substr(0, 1)).empty() &&
             !specification.options.empty()) {
    std::string& help = specification.options.back().help;
    help += (help.empty() ? "" : " ") + std::string(text);
  } else {
    return "is not understood";
  }
  return "";
}

}  // namespace

base::Result<Specification> parseSpecification(std::string_view text) {
  Specification specification;
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    std::string problem;
    if (number == 1) {
      specification.summary = base::trimmed(line);
      problem = specification.summary.empty() ||
                        base::startsWith(specification.summary, kDashes)
                    ? "does not say what the application does"
                    : "";
    } else if (!base::trimmed(line).empty()) {
      problem = addLine(line, specification);
    }
    if (!problem.empty()) {
      return base::makeFailure(
          base::FailureKind::kUsage,
          "line " + std::to_string(number) + " of its options " + problem);
    }
  }
  return specification;
}

}  // namespace args
