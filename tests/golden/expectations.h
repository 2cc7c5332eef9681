#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/bmc/record/counters.h"

namespace golden {

/// Figures of a run by name.
using Figures = std::map<std::string, std::uint64_t>;

/// What a controller counted, with the names that it gives its counters.
Figures figuresOf(const bmc::Counters& counters);

/// Holds figures against expectations such as "requests <= 27" or
/// "sessionsDeleted == sessionsCreated", one a line. One text for each
/// expectation that is not met, is about no figure, or cannot be read.
std::vector<std::string> unmet(const std::string& expectations,
                               const Figures& figures);

}  // namespace golden
