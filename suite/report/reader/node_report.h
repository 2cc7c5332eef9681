#pragma once

#include <cstdint>
#include <string>

#include "suite/base/clock.h"
#include "suite/base/failure.h"
#include "suite/devhealth/inventory.h"
#include "suite/report/report.h"

namespace report {

/// Reads what is wanted of one target into a report: everything but `target`.
/// `begun` is when work on the target began. Has no part in the run's state, so
/// that readings of several services may go side by side. Throws a
/// `base::Failure` if the user has interrupted the run.
ServerReport readNode(devhealth::Inventory& inventory, std::uint32_t wants,
                      base::Clock::time_point begun);

/// The report of a target that could not be reached at all.
ServerReport failedReport(const base::Failure& failure,
                          base::Clock::time_point begun);

/// The present time as RFC 3339 has it, in UTC and to the second.
std::string utcTime();

}  // namespace report
