#include "syshealth/health/name_tables.h"

// clang-format off
const std::array<std::string, 8> AlertCategoryNames = {
    "System",
    "Processors",
    "Cooling",
    "Memory",
    "PCI",
    "Power",
    "Disks",
    "Other",
};

const std::array<std::string, 3> AlertSeverityNames = {
    "Normal",
    "Warning",
    "Error",
};

const std::array<std::string, 4> OrvaneTypeNames = {
    "",  // Unknown.
    "Orvane1",
    "Orvane2",
    "Dravik",
};
// clang-format on
