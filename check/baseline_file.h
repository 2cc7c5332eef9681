#pragma once

#include <optional>
#include <string>

#include "check/baseline.h"

namespace check {

/// Reads a baseline from a file. Returns nullopt and sets `error`, which names
/// the file, if it cannot be read or is no baseline.
std::optional<Baseline> loadBaseline(const std::string& path,
                                     std::string& error);

}  // namespace check
