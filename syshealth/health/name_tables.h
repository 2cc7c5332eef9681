#pragma once

#include <array>
#include <string>

/// The hardware categories, in the order in which the summary shows them. An
/// alert belongs to the one that its category equals byte for byte.
extern const std::array<std::string, 8> AlertCategoryNames;

/// The severities, by an alert's severity: 0 to 2.
extern const std::array<std::string, 3> AlertSeverityNames;

/// The controller generations, by `Tarvex::Agentless::OrvaneTypeValue`. The
/// log shows the number, so no command reads the names.
extern const std::array<std::string, 4> OrvaneTypeNames;
