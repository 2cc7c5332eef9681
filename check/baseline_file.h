#pragma once

#include <string>

#include "check/baseline.h"

namespace check {

/// Reads a baseline from a file. If it cannot be read or is no baseline, the
/// cause of the failure names the file.
base::Result<Baseline> loadBaseline(const std::string& path);

}  // namespace check
