#pragma once

#include <optional>
#include <vector>

#include "suite/devhealth/inventory.h"
#include "suite/devhealth/target_reader.h"

namespace devhealth {

/// Reads a node's active events. `readEvents` tells what else it wants; that is
/// read and `readEvents` called again, until it wants nothing new. Returns the
/// failure if the events cannot be known.
std::optional<Unread> readHealth(TargetReader& reader,
                                 std::vector<report::Event>& events);

}  // namespace devhealth
