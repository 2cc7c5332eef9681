#pragma once

#include <optional>
#include <string>

#include "suite/base/failure.h"
#include "suite/base/secret.h"

namespace connection {

/// Whether a person could be asked: standard input is a terminal.
bool inputIsTerminal();

/// Asks the person at the terminal for a password; the answer is not shown.
/// Nothing, and what is wrong in `failure`, when there is none: standard input
/// that is no terminal counts as no password given.
std::optional<base::Secret> askPassword(const std::string& question,
                                        base::Failure& failure);

}  // namespace connection
