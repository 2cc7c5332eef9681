#pragma once

#include <optional>
#include <string>

#include "suite/base/failure.h"
#include "suite/base/secret.h"

namespace connection {

/// Reads a password from a descriptor: the first line, without its end, and no
/// byte beyond. Nothing, and what is wrong in `failure`, when that line is
/// empty, holds a NUL byte or is longer than 1024 bytes, when it cannot be
/// read, and when the user ends the run. `source` names the descriptor there.
std::optional<base::Secret> readPasswordLine(int descriptor,
                                             const std::string& source,
                                             base::Failure& failure);

/// The password that such a line is, whose end was taken off but for a
/// carriage return; wipes the line.
std::optional<base::Secret> passwordOf(std::string&& line,
                                       const std::string& source,
                                       base::Failure& failure);

}  // namespace connection
