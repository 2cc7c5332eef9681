#pragma once

#include <string>
#include <string_view>

#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {

/// Health of one part: `Status.Health` where it says something, else
/// `Status.HealthRollup`.
redfish::Health partHealth(const redfish::json::object& part);

/// The word for a health: "OK", "Warning", "Critical", "Unknown".
std::string_view healthWord(redfish::Health health);

/// What the health columns show of a part.
std::string healthState(const redfish::json::object& part);

}  // namespace devhealth
