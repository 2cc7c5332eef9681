#pragma once

#include <cstdint>

#include "syshealth/host/export.h"

/// Base of every application of the suite. The application's object derives
/// from it and writes both members before it runs a command; the host reads
/// them, nothing here does.
class BRIVEL_SUITE_API AppBase {
 public:
  AppBase();
  virtual ~AppBase();

  std::int32_t appId = 0;    ///< The application's registered number.
  std::int32_t command = 0;  ///< The command number that the host passed.
};
