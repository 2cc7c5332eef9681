#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "suite/connection/connections.h"

namespace brivel {

/// What a run cost: one line per target and one for the wall time, each with
/// its line end.
std::string statsLines(const std::vector<connection::TargetCost>& costs,
                       std::chrono::nanoseconds wallTime);

}  // namespace brivel
