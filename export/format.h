#pragma once

#include <iosfwd>

#include "suite/report/report.h"

namespace exporting {

/// A form in which reports are written. One object is made for each run.
class Format {
 public:
  virtual ~Format() = default;

  /// Takes the next report. What can be written already is written; a form
  /// that groups its lines otherwise keeps what it needs.
  virtual void add(const report::ServerReport& report, std::ostream& out) = 0;

  /// Writes what is left, after the last report.
  virtual void end(std::ostream& out) = 0;
};

}  // namespace exporting
