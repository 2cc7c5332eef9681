#pragma once

#include <chrono>

namespace base {

/// The clock of all time limits; it is monotonic.
using Clock = std::chrono::steady_clock;

}  // namespace base
