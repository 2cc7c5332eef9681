#pragma once

#include <sstream>

#include "syshealth/host/export.h"

namespace Tarvex {

/// One line of the suite's log: built, filled through its stream, and emitted
/// when it is destroyed. Levels: 4 trace, 3 information, 1 error; a line is
/// worth building when `GetMinLogLevel()` is at least its level.
class BRIVEL_SUITE_API Log {
 public:
  /// Opens a line, tagged with the place in the source that writes it.
  Log(unsigned int level, const char* file, int line);

  /// Emits the line, if the log's threshold lets its level through.
  virtual ~Log();

  Log(const Log&) = delete;
  Log& operator=(const Log&) = delete;

  /// The text of the line.
  std::ostringstream& Stream();

  /// The log's threshold: 0 nothing, up to 4 everything.
  static unsigned int GetMinLogLevel();

 private:
  std::ostringstream stream_;
  unsigned int level_;
  const char* file_;
  int line_;
};

}  // namespace Tarvex
