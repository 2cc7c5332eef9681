#pragma once

#include <string_view>

#include "suite/redfish/graph/json.h"

namespace redfish {

/// Health of a resource, in ascending order of severity. kUnknown stands for
/// a missing, null or unknown text.
enum class Health { kUnknown, kOk, kWarning, kCritical };

/// Reads a Health text of the Resource schema ("OK", "Warning", "Critical").
Health healthFromText(std::string_view text);

/// `Health` of the Status object at a path ("Status", "MemorySummary/Status").
Health ownHealth(const json::object& object, std::string_view statusPath);

/// `HealthRollup` of the Status object at a path; where that has no value,
/// "HealthRollUp", as older services spell it.
Health statedRollup(const json::object& object, std::string_view statusPath);

/// Worse of `HealthRollup` and `Health` of the Status object at a path.
Health rollup(const json::object& object, std::string_view statusPath);

/// Whether the object's Status says that the part is not there
/// (State "Absent"). A missing Status or State counts as present.
bool isAbsent(const json::object& object);

}  // namespace redfish
