#include "suite/devhealth/parts/health_text.h"

namespace devhealth {

redfish::Health partHealth(const redfish::json::object& part) {
  const redfish::Health own = redfish::ownHealth(part, "Status");
  if (own != redfish::Health::kUnknown) {
    return own;
  }
  return redfish::statedRollup(part, "Status");
}

std::string_view healthWord(redfish::Health health) {
  switch (health) {
    case redfish::Health::kOk:
      return "OK";
    case redfish::Health::kWarning:
      return "Warning";
    case redfish::Health::kCritical:
      return "Critical";
    case redfish::Health::kUnknown:
      break;
  }
  return "Unknown";
}

std::string healthState(const redfish::json::object& part) {
  return std::string(healthWord(partHealth(part)));
}

}  // namespace devhealth
