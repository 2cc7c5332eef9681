#include "suite/devhealth/parts/health_text.h"

namespace devhealth {

using redfish::Health;

Health partHealth(const redfish::json::object& part) {
  const Health own = redfish::ownHealth(part, "Status");
  if (own != Health::kUnknown) {
    return own;
  }
  return redfish::statedRollup(part, "Status");
}

std::string_view healthWord(Health health) {
  switch (health) {
    case Health::kOk:
      return "OK";
    case Health::kWarning:
      return "Warning";
    case Health::kCritical:
      return "Critical";
    case Health::kUnknown:
      break;
  }
  return "Unknown";
}

std::string healthState(const redfish::json::object& part) {
  return std::string(healthWord(partHealth(part)));
}

}  // namespace devhealth
