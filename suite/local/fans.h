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

/// Whether the running system tells programs of fans at all.
bool systemTellsOfFans();

}  // namespace local
