#pragma once

#include <string>
#include <vector>

namespace bench {

/// One run of a program.
struct Run {
  int status = -1;             ///< Exit status; 128 and more: a signal.
  double milliseconds = 0;     ///< From start to end.
  double cpuMilliseconds = 0;  ///< Of the processor, its own and the system's.
  double mebibytes = 0;        ///< Peak of resident memory.
  std::string errors;          ///< What it wrote on standard error.
};

/// Runs a program to its end, its output thrown away. One that cannot be
/// started has the status 127. The memory is never less than this program's
/// own, because the system counts from before the new program is loaded: keep
/// it small.
Run runProgram(const std::vector<std::string>& words, const std::string& home);

}  // namespace bench
