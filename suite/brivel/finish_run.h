#pragma once

#include <string>
#include <vector>

#include "suite/brivel/result_line.h"

namespace brivel {

/// Prints what is left to be said of a run that has ended: the notes, one line
/// each, and why it failed, if it did; a monitoring plug-in says the latter in
/// the way of plug-ins. Returns the exit status.
int finishRun(RunResult result, const std::vector<std::string>& notices,
              bool plugIn);

}  // namespace brivel
