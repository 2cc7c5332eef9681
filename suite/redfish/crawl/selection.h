#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "suite/redfish/graph/uri.h"

namespace redfish {

/// What a run wants to know of a node; values are OR-ed.
enum Want : std::uint32_t {
  kWantSystem = 1U << 0,
  kWantProcessors = 1U << 1,
  kWantFans = 1U << 2,
  kWantDimms = 1U << 3,
  kWantPowers = 1U << 4,
  kWantPciAdapters = 1U << 5,
  kWantHealth = 1U << 6,
  /// With kWantHealth: the health walk enters every branch, whatever the
  /// roll-ups say.
  kWantThorough = 1U << 7
};

/// What one reading of the service is to bring into its graph.
struct Selection {
  std::uint16_t nodeIndex = 0;
  std::uint32_t wants = 0;  ///< Want values.
  /// Document keys of holders (system, chassis, managers) whose roll-up is
  /// worse than all that was found below them: the branches that the health
  /// walk skipped there are entered after all.
  std::set<std::string> unexplained;
  /// Further resources, such as the origins of conditions and registries.
  std::vector<Uri> extras;
};

}  // namespace redfish
