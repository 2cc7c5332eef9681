#pragma once

#include <optional>
#include <string>

#include "tests/bmc/faults/fault_plan.h"

namespace bmc {

/// Reads a fault file; README.md describes it. Nothing, and the reason in
/// `error`, when it cannot be read or says anything that is not understood.
std::optional<FaultPlan> readFaultFile(const std::string& path,
                                       std::string& error);

}  // namespace bmc
