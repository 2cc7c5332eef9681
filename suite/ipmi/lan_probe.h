#pragma once

#include <cstdint>
#include <string>

#include "suite/base/clock.h"

namespace ipmi {

/// Which IPMI a controller speaks over UDP.
enum class LanAnswer {
  kNone,    ///< Nothing in time, or nobody listens there.
  kIpmi15,  ///< IPMI, version 1.5 or unknown.
  kIpmi20   ///< IPMI 2.0.
};

/// Asks a controller, without a login, whether it speaks IPMI over LAN. Asks
/// for its authentication capabilities up to three times within 4 s, then sends
/// one presence ping and waits 1 s. The ping comes last because some old cards
/// cannot cope with it. `host` is a name or an address (IPv6 without brackets);
/// `port` is usually 623 (RMCP). Returns at `until` at the latest, and when the
/// user interrupts the run.
LanAnswer probeLan(const std::string& host, std::uint16_t port,
                   base::Clock::time_point until);

}  // namespace ipmi
