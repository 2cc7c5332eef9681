#pragma once

#include <string>
#include <string_view>

namespace logging {

/// Where the run's log goes, and how much of it.
struct LogOptions {
  std::string file;        ///< Empty: no log.
  unsigned int level = 3;  ///< 0 nothing, 1 errors, 3 information, 4 trace.
  bool askedFor =
      true;  ///< False: give it up silently if it cannot be written.
};

/// Keeps lines of every level from now on until `openLog`, which then writes
/// those that its threshold lets through, or `closeLog`, which drops them. For
/// code that logs before the log's place is known.
void keepEarlyLines();

/// Opens the process's log. Before that and after `closeLog`, lines are
/// dropped. A file of 4 MiB or more is set aside first; three older ones are
/// kept ("brivel.1.log" ...). Several processes may share a log. Files and the
/// directories that are made for them are readable by their owner only; which
/// files are refused is told at platform::OwnedFile. If the log cannot be
/// written, the run continues without it; one warning on standard error says
/// so if it was asked for.
void openLog(const LogOptions& options);

/// Closes the log.
void closeLog();

/// Path of the open log; empty if there is none.
const std::string& logPath();

/// The threshold in force: 0 if nothing is written or kept.
unsigned int threshold();

/// Writes one line if its level is within the threshold. `file` is a source
/// path with the separators of any platform; its last part is written. Never
/// throws.
void writeLine(unsigned int level, std::string_view file, int line,
               std::string_view text) noexcept;

}  // namespace logging
