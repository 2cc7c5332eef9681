#pragma once

#include <vector>

#include "suite/devhealth/target_reader.h"
#include "syshealth/health/alert.h"

namespace devhealth {

/// Reads a node's active events: what the alerts of one reading still want is
/// read and they are asked again, until nothing new is wanted or to be had. A
/// status; on success `alerts` holds the events.
int readHealth(TargetReader& reader,
               std::vector<Tarvex::DeviceHealth::Alert>& alerts);

}  // namespace devhealth
