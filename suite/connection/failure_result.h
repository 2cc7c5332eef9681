#pragma once

#include "suite/base/failure.h"

namespace connection {

/// The suite-wide result code of a failure to reach a target. 0 for a service
/// that was reached but has no such system: the calls that read the system
/// report it.
int resultOf(base::FailureKind kind);

}  // namespace connection
