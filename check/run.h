#pragma once

#include "syshealth/result/brivel_result.h"

namespace check {

/// Reads the targets of the run, judges them and prints the plug-in's output.
/// The result's code is the status, 0 to 3.
BrivelResult run();

}  // namespace check
