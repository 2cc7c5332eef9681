#pragma once

#include <string>
#include <vector>

#include "suite/devhealth/health/alerts.h"
#include "tests/suite/devhealth/server.h"

/// The alerts that the events of a reading are.
std::vector<Tarvex::DeviceHealth::Alert> alertsIn(
    const devhealth::HealthReading& reading);

/// The alerts of a node, each in one line: category, severity, message
/// identifier, message.
std::vector<std::string> alertLines(const devhealth::HealthReading& reading);

/// The reading of the first node.
devhealth::HealthReading readingOf(const Server& server, bool thorough = false);

/// The alert lines of the first node, whose reading must not have failed.
std::vector<std::string> alertsOf(const Server& server, bool thorough = false);

/// What a reading wants, and what it finds unexplained, as document keys
/// without "/redfish/v1/".
std::vector<std::string> wantedOf(const devhealth::HealthReading& reading);
std::vector<std::string> unexplainedOf(const devhealth::HealthReading& reading);

/// A list of lines, for comparisons.
using Lines = std::vector<std::string>;

/// {"Status": {"Health": HEALTH, "State": "Enabled"}} with further properties.
std::string withHealth(const std::string& health, const std::string& more = "");
