#pragma once

#include <optional>

#include "suite/base/secret.h"

namespace connection {

/// Takes the password out of the environment: what BRIVEL_PASSWORD holds, if
/// it is set and not empty. The variable is gone afterwards, and its bytes are
/// overwritten, so that neither a child nor /proc shows it.
std::optional<base::Secret> takeEnvironmentPassword();

}  // namespace connection
