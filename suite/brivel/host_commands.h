#pragma once

#include "suite/brivel/options/options.h"

namespace brivel {

/// Reads the command line of a command of the host, and runs it. Returns the
/// exit status.
int runHostCommand(int argc, const char* const* argv,
                   const HostCommand& command);

/// Prints the whole help. Returns the exit status.
int showFullHelp();

}  // namespace brivel
