#include "tests/golden/expectations.h"

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <optional>
#include <sstream>

#include "suite/base/numbers.h"
#include "tests/golden/text_file.h"

namespace golden {
namespace {

// A number, or the figure of this name.
std::optional<std::uint64_t> valueOf(const std::string& word,
                                     const Figures& figures) {
  const auto figure = figures.find(word);
  if (figure != figures.end()) {
    return figure->second;
  }
  return base::parseNumber<std::uint64_t>(word);
}

std::optional<bool> holds(std::uint64_t actual, const std::string& relation,
                          std::uint64_t expected) {
  if (relation == "==") {
    return actual == expected;
  }
  if (relation == "<=") {
    return actual <= expected;
  }
  if (relation == ">=") {
    return actual >= expected;
  }
  return std::nullopt;
}

}  // namespace

Figures figuresOf(const bmc::Counters& counters) {
  Figures figures;
  const auto all = boost::json::parse(bmc::toJson(counters));
  for (const auto& [name, value] : all.as_object()) {
    if (value.is_number()) {
      figures[name] = value.to_number<std::uint64_t>();
    }
  }
  return figures;
}

std::vector<std::string> unmet(const std::string& expectations,
                               const Figures& figures) {
  std::vector<std::string> texts;
  for (const std::string& line : linesOf(expectations)) {
    std::istringstream words(line);
    std::string name;
    std::string relation;
    std::string other;
    words >> name >> relation >> other;
    const auto actual = figures.find(name);
    const auto expected = valueOf(other, figures);
    const auto met = actual == figures.end() || !expected
                         ? std::nullopt
                         : holds(actual->second, relation, *expected);
    if (!met) {
      texts.push_back(line + ": cannot be read");
    } else if (!*met) {
      texts.push_back(line + ": was " + std::to_string(actual->second));
    }
  }
  return texts;
}

}  // namespace golden
