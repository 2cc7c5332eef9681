#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace golden {

/// A program to be run, with everything that it can see of its surroundings.
struct Command {
  std::filesystem::path program;
  std::vector<std::string> arguments;    ///< Without the program's name.
  std::vector<std::string> environment;  ///< "NAME=value"; nothing else is set.
  std::filesystem::path directory;       ///< Where it runs.
  std::filesystem::path input;           ///< Its standard input.
  std::filesystem::path output;          ///< Receives its standard output.
  std::filesystem::path errors;          ///< Receives its standard error.
};

/// How a program ended, and what it took.
struct Outcome {
  int status = 0;  ///< Its exit status, or 128 and the number of the signal.
  bool dumpedCore = false;         ///< It left a picture of its memory.
  std::uint64_t milliseconds = 0;  ///< From start to end.
  std::uint64_t kibibytes = 0;     ///< The most memory that it had resident.
};

/// Runs the program to its end, for a minute at most. `meanwhile`, if any, is
/// called once with its process id while it runs.
Outcome runChild(const Command& command,
                 const std::function<void(pid_t)>& meanwhile = nullptr);

}  // namespace golden
