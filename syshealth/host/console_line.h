#pragma once

#include <sstream>
#include <string>

#include "syshealth/host/log.h"

/// One line for the user and for the log: level 1 goes to standard error,
/// level 3 to standard output. It is always built and always handed to the
/// log, whatever the log's threshold, because the console must show it.
///
/// Made, filled and destroyed within one statement; the destructor writes the
/// text with an end of line to the console, flushes it, and then emits the log
/// line.
class ConsoleLine {
 public:
  /// Opens a line, tagged with the place in the source that writes it.
  ConsoleLine(unsigned int level, const char* file, int line);
  ~ConsoleLine();

  ConsoleLine(const ConsoleLine&) = delete;
  ConsoleLine& operator=(const ConsoleLine&) = delete;

  /// The text of the line.
  std::ostringstream& Stream();

 private:
  std::ostringstream stream_;
  Tarvex::Log log_;
  unsigned int level_;
};

/// Writes one line of a report: standard output and the log, level 3.
void printReport(const std::string& text, int line = __builtin_LINE());

/// Writes one line about a failure: standard error and the log, level 1.
void printError(const std::string& text, int line = __builtin_LINE());
