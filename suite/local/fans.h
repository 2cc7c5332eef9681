#pragma once

#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/facts/root.h"

namespace local {

/// The fans that the machine's monitoring chips report: those with a speed,
/// measured or target, under /sys/class/hwmon, by chip and number.
///
/// The kernel's folder is read directly, and not through libsensors, because
/// that library reads "/sys" alone (a recorded machine has another root) and
/// does not know target speeds (fanN_target).
std::vector<FanFacts> fanFacts(const Root& root);

/// Whether the running system reports fans at all: the class that Windows has
/// for them holds no speeds.
#if defined(_WIN32)
inline constexpr bool kSystemHasFanSource = false;
#else
inline constexpr bool kSystemHasFanSource = true;
#endif

}  // namespace local
