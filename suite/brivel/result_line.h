#pragma once

#include <cstdint>
#include <string>

namespace brivel {

/// How a run of an application ended.
struct RunResult {
  std::int32_t code = 0;  ///< 0: success.
  std::string message;    ///< Of the application; empty: of the catalogue.
  std::string cause;      ///< What went wrong, one clause; may be empty.
};

/// The result of a failed run: "result CODE: MESSAGE Cause: CAUSE".
std::string resultText(const RunResult& result);

/// The last line of a failed run: result code, message, cause, and the path of
/// the log if there is one. Without line end.
std::string resultLine(const RunResult& result, const std::string& logPath);

}  // namespace brivel
