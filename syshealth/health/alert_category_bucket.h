#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "syshealth/health/alert.h"

/// The alerts of one hardware category, as the health summary shows them.
struct AlertCategoryBucket {
  std::string name;                                 ///< The category's name.
  std::int32_t status = 0;                          ///< Severity shown for it.
  std::vector<Tarvex::DeviceHealth::Alert> alerts;  ///< In the order shown.
};
