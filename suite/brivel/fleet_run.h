#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include "suite/base/result.h"
#include "suite/base/secret.h"
#include "suite/brivel/application.h"
#include "suite/brivel/options/command_line.h"
#include "suite/connection/settings/settings.h"
#include "suite/fleet/members.h"

namespace brivel {

/// The targets of a run that reads several, as the command line names them.
/// Fails if there is no such group or file, or nothing in it.
base::Result<std::vector<fleet::Member>> membersOf(
    const CommandLine& line, const connection::Settings& settings);

/// Runs the application on several targets and prints on standard error what
/// went wrong. Returns the exit status.
int runOnFleet(const CommandLine& line, Application& application,
               std::vector<fleet::Member> members,
               std::optional<base::Secret> environmentPassword,
               std::chrono::steady_clock::time_point begun);

}  // namespace brivel
