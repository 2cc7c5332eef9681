#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "suite/base/clock.h"
#include "suite/fleet/fleet.h"
#include "suite/fleet/turn.h"
#include "suite/fleet/workers.h"
#include "suite/report/report.h"

namespace report {

/// Reads the members of a fleet side by side, each in a thread with a service
/// of its own. A member that is too large for that is read again, alone.
class FleetReading {
 public:
  /// Finds the passwords and begins. `wants` are `Want` values.
  FleetReading(fleet::Fleet& fleet, std::uint32_t wants);
  ~FleetReading();

  FleetReading(const FleetReading&) = delete;
  FleetReading& operator=(const FleetReading&) = delete;

  /// The next report, in the order of completion; see `Reports::next`.
  bool next(ServerReport& report);

 private:
  /// What was read of a member.
  struct Reading {
    std::vector<ServerReport> reports;  ///< Of its nodes.
    bool tooLarge = false;  ///< More was to be had than was to be kept.
    bool alone = false;     ///< Read in its turn, which is not given back yet.
  };

  Reading readMember(std::size_t index);
  Reading readOnce(std::size_t index, std::size_t readingBytes) const;
  std::vector<ServerReport> readNodes(redfish::Service& service,
                                      const Target& target,
                                      base::Clock::time_point begun) const;

  fleet::Fleet& fleet_;
  const std::uint32_t wants_;
  fleet::Progress progress_;
  std::deque<ServerReport> ready_;
  fleet::Turn turn_;           ///< Of members that are read alone.
  bool hasTurn_ = false;       ///< For `ready_`.
  std::vector<Reading> read_;  ///< By member.
  fleet::Workers workers_;     ///< Last: its threads use the others.
};

}  // namespace report
