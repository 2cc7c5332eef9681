#include "tests/suite/devhealth/alert_reading.h"

#include <gtest/gtest.h>

namespace {

constexpr std::size_t kPrefix = std::string_view("/redfish/v1/").size();

}  // namespace

std::vector<std::string> alertLines(const devhealth::HealthReading& reading) {
  std::vector<std::string> lines;
  for (const auto& alert : alertsIn(reading)) {
    lines.push_back(alert.category + " " + std::to_string(alert.severity) +
                    " " + alert.messageId + " | " + alert.message);
  }
  return lines;
}

std::vector<Tarvex::DeviceHealth::Alert> alertsIn(
    const devhealth::HealthReading& reading) {
  std::vector<Tarvex::DeviceHealth::Alert> alerts;
  for (const report::Event& event : reading.events) {
    alerts.push_back(devhealth::printed(event));
  }
  return alerts;
}

devhealth::HealthReading readingOf(const Server& server, bool thorough) {
  return devhealth::readEvents(server.graph(), server.topology(), server.node(),
                               {thorough, {}});
}

std::vector<std::string> alertsOf(const Server& server, bool thorough) {
  const devhealth::HealthReading reading = readingOf(server, thorough);
  EXPECT_FALSE(reading.failure.has_value()) << reading.failure->cause;
  return alertLines(reading);
}

std::vector<std::string> wantedOf(const devhealth::HealthReading& reading) {
  std::vector<std::string> links;
  for (const auto& link : reading.wanted) {
    links.push_back(link.document().substr(kPrefix));
  }
  return links;
}

std::vector<std::string> unexplainedOf(
    const devhealth::HealthReading& reading) {
  std::vector<std::string> documents;
  for (const std::string& document : reading.unexplained) {
    documents.push_back(document.substr(kPrefix));
  }
  return documents;
}

std::string withHealth(const std::string& health, const std::string& more) {
  return R"({"Status": {"Health": ")" + health + R"(", "State": "Enabled"})" +
         (more.empty() ? "" : ", " + more) + "}";
}
