#pragma once

#include "syshealth/host/log.h"

namespace base {

// Levels of the suite's log: a line is kept if the log's threshold is at least
// its level.
inline constexpr unsigned int kLogError = 1;        ///< Failures.
inline constexpr unsigned int kLogInformation = 3;  ///< Decisions, progress.
inline constexpr unsigned int kLogTrace = 4;        ///< Each request.

}  // namespace base

/// Opens a log line of the level, a stream to insert its text into. A macro,
/// because a line below the threshold must not evaluate its text.
#define BRIVEL_LOG(level)                        \
  if (Tarvex::Log::GetMinLogLevel() < (level)) { \
  } else                                         \
    Tarvex::Log((level), __FILE__, __LINE__).Stream()
