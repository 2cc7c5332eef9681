#pragma once

#include "suite/base/failure.h"

namespace connection {

/// The suite-wide result code that a failure of reaching a target stands for.
/// 0 for a service that was reached but has no such system: what is wrong then
/// is told by the calls that read it.
int resultOf(base::FailureKind kind);

}  // namespace connection
