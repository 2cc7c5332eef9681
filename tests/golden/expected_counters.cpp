#include "tests/golden/expected_counters.h"

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <cstdint>
#include <optional>
#include <sstream>

#include "tests/golden/text_file.h"

namespace golden {
namespace {

std::optional<bool> holds(std::uint64_t actual, const std::string& relation,
                          std::uint64_t expected) {
  if (relation == "==") return actual == expected;
  if (relation == "<=") return actual <= expected;
  if (relation == ">=") return actual >= expected;
  return std::nullopt;
}

}  // namespace

std::vector<std::string> unmetCounters(const std::string& expectations,
                                       const bmc::Counters& counters) {
  const boost::json::value all = boost::json::parse(bmc::toJson(counters));
  std::vector<std::string> unmet;
  for (const std::string& line : linesOf(expectations)) {
    std::istringstream words(line);
    std::string name;
    std::string relation;
    std::uint64_t expected = 0;
    words >> name >> relation >> expected;
    const boost::json::value* counter = all.as_object().if_contains(name);
    if (words.fail() || counter == nullptr || !counter->is_number()) {
      unmet.push_back(line + ": cannot be read");
      continue;
    }
    const auto actual = counter->to_number<std::uint64_t>();
    if (!holds(actual, relation, expected).value_or(false)) {
      unmet.push_back(line + ": was " + std::to_string(actual));
    }
  }
  return unmet;
}

}  // namespace golden
