#pragma once

#include <optional>
#include <vector>

#include "suite/devhealth/inventory.h"
#include "suite/devhealth/target_reader.h"

namespace devhealth {

/// Reads a node's active events: what one look at them still wants is read
/// and they are looked at again, until nothing new is wanted or to be had.
/// Returns why not if they cannot be known.
std::optional<Unread> readHealth(TargetReader& reader,
                                 std::vector<report::Event>& events);

}  // namespace devhealth
