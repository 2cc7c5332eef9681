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

/// From now on an exception for lack of memory where none may be thrown, such
/// as in a library's own start, ends the process with a line on standard error
/// and the status of an internal error, and leaves no picture of its memory.
void endWithoutMemory();

/// Prints what is left to be said of a run that has ended: the notes, one line
/// each, and why it failed, if it did; a monitoring plug-in says the latter in
/// the way of plug-ins. Returns the exit status.
int finishRun(RunResult result, const std::vector<std::string>& notices,
              bool plugIn);

}  // namespace brivel
