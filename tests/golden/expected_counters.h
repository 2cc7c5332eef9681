#pragma once

#include <string>
#include <vector>

#include "tests/bmc/counters.h"

namespace golden {

/// Holds what a controller counted against expectations such as
/// "requests <= 27" or "sessionsDeleted == 1", one a line, with the names that
/// the controller gives its counters. One text for each expectation that is
/// not met, is about no counter, or cannot be read.
std::vector<std::string> unmetCounters(const std::string& expectations,
                                       const bmc::Counters& counters);

}  // namespace golden
