#pragma once

#include <optional>
#include <string>
#include <vector>

#include "suite/brivel/command_line.h"
#include "suite/brivel/result_line.h"

namespace brivel {

/// Runs a command of an application: loads its module, lets it register, runs
/// the command and unloads it. Returns nullopt and sets `error` if there is no
/// such application, or its module cannot be loaded or registers another name.
/// An exception of the module becomes the suite's internal error.
std::optional<RunResult> runApplication(const CommandLine& line,
                                        std::string& error);

/// One line per application: name, number, file. `errors` gets one line per
/// module that cannot be loaded.
std::string listApplications(std::vector<std::string>& errors);

}  // namespace brivel
