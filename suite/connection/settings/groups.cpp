#include "suite/connection/settings/groups.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_set>

#include "suite/base/ascii.h"
#include "suite/base/natural_order.h"
#include "suite/base/suggestion.h"
#include "suite/connection/settings/settings_values.h"

namespace connection {
namespace {

[[noreturn]] void rejectGroup(const toml::source_region& place,
                              std::string_view name, const std::string& what) {
  throw SettingsMistake{place.begin.line,
                        "'" + std::string(name) + "' in [groups] " + what};
}

// A name that needs no quotation marks in any shell or in ClusterShell.
bool isGroupName(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    return base::isAlphanumeric(c) || c == '-' || c == '_' || c == '.';
  });
}

bool isPattern(std::string_view text) {
  return text.find_first_of("*?") != std::string_view::npos;
}

// The targets that an entry of a group stands for. `known` holds them all.
std::vector<std::string> matchingTargets(
    const std::string& pattern, const std::vector<std::string>& targets,
    const std::unordered_set<std::string_view>& known) {
  std::vector<std::string> found;
  if (!isPattern(pattern)) {
    if (known.count(pattern) > 0) {
      found.push_back(pattern);
    }
    return found;
  }
  std::copy_if(targets.begin(), targets.end(), std::back_inserter(found),
               [&](const std::string& target) {
                 return matchesPattern(target, pattern);
               });
  std::sort(found.begin(), found.end(), base::naturallyBefore);
  return found;
}

}  // namespace

bool matchesPattern(std::string_view name, std::string_view pattern) {
  std::size_t at = 0;
  std::size_t in = 0;
  // Where the last "*" stands, and how far the name was when it was met.
  std::size_t star = std::string_view::npos;
  std::size_t mark = 0;
  while (at < name.size()) {
    if (in < pattern.size() && pattern[in] == '*') {
      star = in++;
      mark = at;
    } else if (in < pattern.size() &&
               (pattern[in] == '?' || pattern[in] == name[at])) {
      ++in;
      ++at;
    } else if (star != std::string_view::npos) {
      in = star + 1;
      at = ++mark;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', in) == std::string_view::npos;
}

Groups readGroups(const toml::table& table,
                  const std::vector<std::string>& targets) {
  const std::unordered_set<std::string_view> known(targets.begin(),
                                                   targets.end());
  Groups groups;
  for (const auto& [key, node] : table) {
    const std::string name(key.str());
    if (!isGroupName(name)) {
      rejectGroup(key.source(), name,
                  "is no name for a group: letters, digits, '-', '_' and '.'");
    }
    const toml::array* const entries = node.as_array();
    if (entries == nullptr) {
      rejectGroup(node.source(), name,
                  "must be a list of targets: [\"rack1-*\", \"spare-7\"]");
    }
    std::vector<std::string>& members = groups[name];
    std::unordered_set<std::string> seen;
    for (const toml::node& entry : *entries) {
      const auto text = entry.value_exact<std::string>();
      if (!text) {
        rejectGroup(entry.source(), name,
                    "must hold texts in quotation marks alone");
      }
      const std::vector<std::string> found =
          matchingTargets(*text, targets, known);
      if (found.empty()) {
        rejectGroup(
            entry.source(), name,
            isPattern(*text)
                ? "has a pattern that stands for no target: '" + *text + "'"
                : "names '" + *text + "', which is no target" +
                      base::suggestionFor(*text, targets));
      }
      for (const std::string& target : found) {
        if (seen.insert(target).second) {
          members.push_back(target);
        }
      }
    }
  }
  return groups;
}

}  // namespace connection
