#pragma once

#include <vector>

#include "suite/local/facts/root.h"

namespace local {

/// The highest clock speed, in MHz, that the cores of each processor package
/// reach, by ascending package number; empty when the system does not tell
/// it of every package (/sys/devices/system/cpu/cpuN/cpufreq).
std::vector<unsigned> packageMaxMhz(const Root& root);

}  // namespace local
