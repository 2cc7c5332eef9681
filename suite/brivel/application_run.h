#pragma once

#include <optional>
#include <string>
#include <vector>

#include "suite/brivel/command_line.h"
#include "suite/brivel/result_line.h"

namespace brivel {

/// Runs a command of an application: loads its module, lets it register, run
/// the command, and unloads it. Nothing when there is no such application, its
/// module cannot be loaded, or registers under another name, and the reason in
/// `error`. What the module throws becomes the suite's internal error.
std::optional<RunResult> runApplication(const CommandLine& line,
                                        std::string& error);

/// The applications that there are, a line for each with name, number and
/// file. What is wrong with modules that cannot be loaded is in `errors`.
std::string listApplications(std::vector<std::string>& errors);

}  // namespace brivel
