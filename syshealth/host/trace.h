#pragma once

#include "syshealth/host/log.h"

// How the module writes to the suite's log. A plain line is built only when
// the log's threshold, read afresh for every line, is at least its level;
// otherwise nothing of it is computed. Lines that the user sees too are
// ConsoleLines, which are never gated.

inline constexpr unsigned int kLogError = 1;        ///< Failures.
inline constexpr unsigned int kLogInformation = 3;  ///< Values, progress.
inline constexpr unsigned int kLogTrace = 4;        ///< Entry and exit.

/// The file that every line of the module is tagged with: the application
/// class's place in the suite's source tree.
inline constexpr const char* kLogFile =
    R"(..\..\..\..\..\Src\Misc\SystemHealth\SystemHealth)";

/// Opens a plain log line of the level, a stream to insert its text into.
/// A macro, because a line below the threshold must not evaluate its text.
#define SYSHEALTH_LOG(level)                     \
  if (Tarvex::Log::GetMinLogLevel() < (level)) { \
  } else                                         \
    Tarvex::Log((level), kLogFile, __LINE__).Stream()

/// Traces that the operation of the qualified name begins. Traces are plain
/// statements on purpose: an early failure and an exception leave no exit line,
/// which shows in the log where a run was cut short.
void traceEntering(const char* operation, int line = __builtin_LINE());

/// Traces that the operation of the qualified name is about to return.
void traceExiting(const char* operation, int line = __builtin_LINE());
