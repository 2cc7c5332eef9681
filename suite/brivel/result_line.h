#pragma once

#include <cstdint>
#include <string>

namespace brivel {

/// How a run of an application ended.
struct RunResult {
  std::int32_t code = 0;  ///< 0: success.
  std::string message;    ///< The application's own; empty: the catalogue's.
  std::string cause;      ///< What went wrong, in one clause; may be empty.
};

/// The line that the host adds to a run that failed: the code, its message,
/// the cause, and the log if there is one. Without line end.
std::string resultLine(const RunResult& result, const std::string& logPath);

}  // namespace brivel
