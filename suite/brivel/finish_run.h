#pragma once

#include <functional>
#include <string>
#include <vector>

#include "suite/brivel/result_line.h"

namespace brivel {

/// Runs a part of the program and returns its exit status. An exception that
/// leaves it is reported as an internal error, which has an exit status of its
/// own; a monitoring plug-in says that it knows nothing.
int runGuarded(const std::function<int()>& run, bool plugIn);

/// Prints what is left to be said of a run that has ended: the notes, one line
/// each, and why it failed, if it did; a monitoring plug-in says the latter in
/// the way of plug-ins. Returns the exit status.
int finishRun(RunResult result, const std::vector<std::string>& notices,
              bool plugIn);

}  // namespace brivel
