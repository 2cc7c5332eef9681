#pragma once

#include <filesystem>
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

/// Runs the program to its end, for a minute at most. Its exit status, or 128
/// and the number of the signal that ended it.
int runChild(const Command& command);

}  // namespace golden
