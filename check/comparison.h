#pragma once

#include <string>
#include <vector>

#include "check/finding.h"
#include "suite/report/report.h"

namespace check {

/// What a server lacks of what it had.
struct Comparison {
  std::vector<Finding> findings;
  std::vector<std::string> gaps;  ///< What could not be compared.
};

/// Compares a server with an earlier report of it, part by part. A part is
/// found again at its slot (or name, or the path of its resource where those
/// are not unique). It is
///
/// - missing, an error, if nothing is there any more: "Baseline.Missing";
/// - smaller, an error: "Baseline.Smaller";
/// - another one, a warning, by its serial number, or by its part number where
///   it has no serial number: "Baseline.Changed"; so is a part that is now at
///   another slot, and the server itself.
///
/// Further parts are no findings. A value that was known and is not known now
/// is a gap, as is a list that was not read.
Comparison compare(const report::ServerReport& before,
                   const report::ServerReport& now);

}  // namespace check
