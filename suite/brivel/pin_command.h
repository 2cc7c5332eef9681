#pragma once

#include "suite/brivel/options/command_line.h"
#include "suite/connection/settings/settings.h"

namespace brivel {

/// The command `pin`: prints for each target that the command line names the
/// table that would pin its key in the settings. Returns the exit status.
int showPins(const CommandLine& line, const connection::Settings& settings);

}  // namespace brivel
