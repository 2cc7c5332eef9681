#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "suite/base/clock.h"
#include "suite/fleet/fleet.h"
#include "suite/fleet/workers.h"
#include "suite/report/report.h"

namespace report {

/// Reads the members of a fleet side by side, each in a thread with a service
/// of its own.
class FleetReading {
 public:
  /// Finds the passwords and begins. `wants` are `Want` values.
  FleetReading(fleet::Fleet& fleet, std::uint32_t wants);

  /// The next report, in the order of completion; see `Reports::next`.
  bool next(ServerReport& report);

 private:
  std::vector<ServerReport> readMember(std::size_t index) const;
  std::vector<ServerReport> readNodes(redfish::Service& service,
                                      const Target& target,
                                      base::Clock::time_point begun) const;

  fleet::Fleet& fleet_;
  const std::uint32_t wants_;
  fleet::Progress progress_;
  std::deque<ServerReport> ready_;
  std::vector<std::vector<ServerReport>> read_;  ///< By member.
  fleet::Workers workers_;  ///< Last: its threads use the others.
};

}  // namespace report
