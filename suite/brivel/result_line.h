#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "suite/base/failure.h"

namespace brivel {

/// How a run of an application ended.
struct RunResult {
  std::int32_t code = 0;  ///< 0: success.
  std::string message;    ///< Of the application; empty: of the catalogue.
  std::string cause;      ///< What went wrong, one clause; may be empty.
  std::string remedy;     ///< What to do about it, one clause; may be empty.
  bool combined = false;  ///< The code is the OR of the codes of several items,
                          ///< and so has no message of its own.
  /// The services of the run ended it: no more is to be said than its cause.
  std::optional<base::Failure> ended = std::nullopt;
  /// The application ran to its end, and the code is its own.
  bool answered = false;
};

/// The result of a failed run: "result CODE: MESSAGE Cause: CAUSE; REMEDY."
std::string resultText(const RunResult& result);

/// What the host says last of a failed run: `resultText` and the path of the
/// log, if there is one. Without line end.
std::string resultLine(const RunResult& result, const std::string& logPath);

/// The same for a terminal of `width` columns: one line for each part, folded
/// where it is too long, each with its line end.
std::string resultLines(const RunResult& result, const std::string& logPath,
                        std::size_t width);

}  // namespace brivel
