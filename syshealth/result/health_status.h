#pragma once

#include <cstdint>

/// What the device-health client answers to a call. Values outside this list
/// are internal failures.
enum HealthStatus : std::int32_t {
  kHealthSuccess = 0,
  kHealthNoConnection = -1,
  kHealthRefused = -2,
  kHealthReadFailed = -3,
  kHealthNotSupported = -4
};

/// The result code of a device-health status; the one place where a status
/// becomes a result. For every status but success the code's message is
/// written to standard error and to the log first.
std::int32_t healthStatusToResult(int status);
