#pragma once

#include <string>

#include "suite/base/result.h"
#include "suite/base/secret.h"

namespace connection {

/// Asks the person at the terminal for a password; the answer is not shown.
/// Fails if standard input is no terminal, or no password is entered.
base::Result<base::Secret> askPassword(const std::string& question);

}  // namespace connection
