#pragma once

#include <vector>

#include "suite/local/facts/root.h"

namespace local {

/// The highest clock speed, in MHz, that the cores of each processor package
/// reach, by ascending package number; empty if the system does not state it
/// for every package (/sys/devices/system/cpu/cpuN/cpufreq).
std::vector<unsigned> packageMaxMhz(const Root& root);

}  // namespace local
