#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "suite/base/clock.h"
#include "suite/base/failure.h"
#include "suite/redfish/graph/graph.h"

namespace redfish {

/// Class of a management controller, by what it speaks.
enum class Generation : std::int32_t {
  kUnknown = 0,  ///< Answers HTTP, but nothing that we know.
  kIpmi15 = 1,   ///< IPMI 1.5, or of unknown version.
  kIpmi20 = 2,   ///< IPMI 2.0 over RMCP+.
  kRedfish = 3   ///< A Redfish service with systems.
};

/// What a probe found: a generation, or why there is none.
struct Probed {
  std::optional<base::Failure> failure;
  Generation generation = Generation::kUnknown;
};

/// Where a controller is asked for IPMI over LAN.
struct LanAddress {
  std::string host;  ///< Empty: it is not asked.
  std::uint16_t port = 623;
};

/// What opening a service found.
struct Opened {
  std::optional<base::Failure> failure;  ///< Why it could not be opened.
  const Graph& graph;                    ///< Holds the root if it was read.
  const std::string& address;            ///< Of the service, for the log.
};

/// Finds the generation of a service's controller: from its service root, and
/// only if that did not answer as a Redfish service, by asking for IPMI over
/// UDP until `until`. A name that does not resolve, a certificate that is not
/// trusted and a login that is refused say nothing about the generation and
/// never lead to IPMI.
Probed probeGeneration(const Opened& opened, const LanAddress& lan,
                       base::Clock::time_point until);

}  // namespace redfish
