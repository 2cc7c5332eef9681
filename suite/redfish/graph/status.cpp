#include "suite/redfish/graph/status.h"

#include <algorithm>

namespace redfish {
namespace {

Health healthAt(const json::object& object, std::string_view statusPath,
                std::string_view property) {
  const json::object* status = objectAt(object, statusPath);
  return status == nullptr ? Health::kUnknown
                           : healthFromText(stringAt(*status, property));
}

}  // namespace

Health healthFromText(std::string_view text) {
  if (text == "OK") {
    return Health::kOk;
  }
  if (text == "Warning") {
    return Health::kWarning;
  }
  if (text == "Critical") {
    return Health::kCritical;
  }
  return Health::kUnknown;
}

Health ownHealth(const json::object& object, std::string_view statusPath) {
  return healthAt(object, statusPath, "Health");
}

Health statedRollup(const json::object& object, std::string_view statusPath) {
  const Health health = healthAt(object, statusPath, "HealthRollup");
  return health == Health::kUnknown
             ? healthAt(object, statusPath, "HealthRollUp")
             : health;
}

Health rollup(const json::object& object, std::string_view statusPath) {
  return std::max(statedRollup(object, statusPath),
                  healthAt(object, statusPath, "Health"));
}

bool isAbsent(const json::object& object) {
  return stringAt(object, "Status/State") == "Absent";
}

}  // namespace redfish
