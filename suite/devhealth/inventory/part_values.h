#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/status.h"
#include "suite/report/report.h"

namespace devhealth {

/// A health of the Resource schema in the report.
report::Health reportHealth(redfish::Health health);

/// Health of a part: its own, else that of what it holds.
report::Health healthOfPart(const redfish::json::object& part);

/// The state that a part's `Status.State` stands for.
report::State stateOfPart(const redfish::json::object& part);

/// The power state that a system's `PowerState` stands for.
report::PowerState powerStateOf(const redfish::json::object& system);

/// The whole number at a path, if it is greater than 0.
std::optional<std::int64_t> countAt(const redfish::json::object& object,
                                    std::string_view path);

}  // namespace devhealth
