#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "suite/base/result.h"
#include "suite/base/secret.h"
#include "suite/brivel/application.h"
#include "suite/brivel/options/command_line.h"
#include "suite/connection/in_band.h"
#include "suite/connection/settings/settings.h"
#include "suite/connection/settings/target.h"

namespace brivel {

/// The target of a run; nullopt for this machine itself. Returns a failure of
/// kind `kUsage` if the command line and the settings name a target that
/// cannot be used.
base::Result<std::optional<connection::Target>> targetOf(
    const CommandLine& line, const connection::Settings& settings);

/// How this machine's own parts and controllers are read.
connection::InBandOptions inBandOf(const CommandLine& line,
                                   const connection::Settings& settings);

/// Runs the application on its target, closes the connections and prints on
/// standard error what went wrong. Returns the exit status.
int runConnected(const CommandLine& line, Application& application,
                 std::optional<connection::Target> target,
                 connection::InBandOptions inBand,
                 std::optional<base::Secret> environmentPassword,
                 std::chrono::steady_clock::time_point begun);

}  // namespace brivel
