#pragma once

#include <string>

#include "tests/bmc/control/controller.h"
#include "tests/support/child_process.h"

namespace golden {

/// Sends a signal to a process as soon as the controller has counted enough:
/// "SIGTERM requests >= 5". Waits for that, for 20 s at most; a test failure
/// when it does not come about.
void interrupt(const std::string& order, const bmc::Controller& controller,
               const support::ChildProcess& process);

}  // namespace golden
