#pragma once

#include <sys/types.h>

#include <string>

#include "tests/bmc/controller.h"

namespace golden {

/// Sends a signal to a process as soon as the controller has counted enough:
/// "SIGTERM requests >= 5". Waits for that, for 20 s at most; a test failure
/// when it does not come about.
void interrupt(const std::string& order, const bmc::Controller& controller,
               pid_t process);

}  // namespace golden
