#pragma once

#include <cstdint>
#include <string>

#include "suite/base/clock.h"

namespace ipmi {

/// What a controller answers over UDP without a login.
enum class LanAnswer {
  kNone,    ///< Nothing in time, or nobody listens there.
  kIpmi15,  ///< IPMI, version 1.5 or unknown.
  kIpmi20   ///< IPMI 2.0.
};

/// Asks a controller whether it speaks IPMI over LAN: its authentication
/// capabilities up to three times within 4 s, then one presence ping, 1 s. The
/// ping comes last because some old cards misbehave on it. `host` is a name or
/// an address, IPv6 without brackets; `port` is 623 (RMCP) as a rule. Ends at
/// `until` at the latest, and when the user interrupts the run.
LanAnswer probeLan(const std::string& host, std::uint16_t port,
                   base::Clock::time_point until);

}  // namespace ipmi
