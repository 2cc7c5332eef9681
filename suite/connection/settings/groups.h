#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "suite/connection/settings/toml.h"

namespace connection {

/// Groups by name, each with the names of its targets.
using Groups = std::map<std::string, std::vector<std::string>, std::less<>>;

/// Whether a name is what a pattern stands for: "*" is any text, "?" any one
/// byte, everything else itself.
bool matchesPattern(std::string_view name, std::string_view pattern);

/// Reads the table [groups]: for each group an array of names of targets and
/// patterns of them. Each group lists a target once: in the order of the
/// array, and those of one pattern as a person sorts them. Throws a
/// `SettingsMistake` for everything else, also for a name or pattern that
/// stands for none of `targets`.
Groups readGroups(const toml::table& table,
                  const std::vector<std::string>& targets);

}  // namespace connection
