#pragma once

#include <string>
#include <vector>

namespace bench {

/// One run of a program.
struct Run {
  int status = -1;             ///< Exit status; -1: not started, or a signal.
  double milliseconds = 0;     ///< From start to end.
  double cpuMilliseconds = 0;  ///< Of the processor, its own and the system's.
  double mebibytes = 0;        ///< Peak of resident memory.
};

/// Runs a program to its end, its output thrown away, its standard error into
/// `errorFile`. The memory is never less than this program's own, because the
/// system counts from before the new program is loaded: keep it small.
Run runProgram(std::vector<std::string> words, const std::string& home,
               const std::string& errorFile);

}  // namespace bench
