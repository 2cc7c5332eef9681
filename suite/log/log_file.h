#pragma once

#include <string>
#include <string_view>

namespace logging {

/// Where the run's log goes, and how much of it.
struct LogOptions {
  std::string file;        ///< Empty: no log.
  unsigned int level = 3;  ///< 0 nothing, 1 errors, 3 information, 4 trace.
};

/// Opens the process's log; until then, and after `closeLog`, every line is
/// dropped. A regular file rotates: 4 MiB, and three older ones ("brivel.1.log"
/// ...). Files are readable by their owner alone, missing directories are made
/// likewise. A log that cannot be written is told once on standard error, and
/// the run goes on without it.
void openLog(const LogOptions& options);

/// Closes the log.
void closeLog();

/// Path of the log that is being written; empty when there is none.
const std::string& logPath();

/// The threshold in force: 0 when nothing is written.
unsigned int threshold();

/// Writes one line, if the threshold lets its level through. `file` is a
/// source path with separators of any platform; its last part is shown. Never
/// throws.
void writeLine(unsigned int level, std::string_view file, int line,
               std::string_view text) noexcept;

}  // namespace logging
