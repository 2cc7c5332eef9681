#pragma once

#include <boost/json/value.hpp>
#include <string>

#include "tests/bmc/faults/fault_plan.h"

namespace bmc {

/// Reads one rule of a fault file. `folder` is the file's, for files that the
/// rule names; `where` the rule's place in the file. The first thing that is
/// wrong goes to `error`.
FaultRule readRule(const boost::json::value& value, const std::string& folder,
                   const std::string& where, std::string& error);

}  // namespace bmc
