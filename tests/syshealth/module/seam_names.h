#pragma once

#include <set>
#include <string>

/// Everything that the module takes from the suite, as the sources name it.
const std::set<std::string>& seamNames();

/// A symbol as it stands in the sources, without the list of parameters.
std::string readable(const std::string& symbol);
