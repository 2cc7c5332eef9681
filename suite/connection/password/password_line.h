#pragma once

#include <string>

#include "suite/base/result.h"
#include "suite/base/secret.h"

namespace connection {

/// Reads a password from a descriptor: the first line, without its end, and no
/// byte beyond. Returns the failure if that line is empty, holds a NUL byte or
/// is longer than 1024 bytes, if it cannot be read, or if the user ends the
/// run. `source` names the descriptor there.
base::Result<base::Secret> readPasswordLine(int descriptor,
                                            const std::string& source);

/// The password in such a line, whose end was taken off but for a carriage
/// return. Wipes the line.
base::Result<base::Secret> passwordOf(std::string&& line,
                                      const std::string& source);

}  // namespace connection
