#pragma once

#include <string>
#include <vector>

/// Stands in for the suite's log in the tests of this room: keeps every line,
/// whatever its level, until the next `clearLog`.
struct LogLine {
  std::string place;  ///< File and line that wrote it.
  unsigned int level = 0;
  std::string text;
};

const std::vector<LogLine>& loggedLines();
void clearLog();
