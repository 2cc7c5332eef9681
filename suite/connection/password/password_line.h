#pragma once

#include <string>

#include "suite/base/result.h"
#include "suite/base/secret.h"

namespace connection {

/// Reads a password from a descriptor: the first line, without its end, and no
/// byte beyond. Returns the failure if that line is empty, holds a NUL byte or
/// is longer than 1024 bytes, if it cannot be read, or if the user ends the
/// run. `source` names the descriptor there. `nonBlocking`: the descriptor is
/// (O_NONBLOCK); a pipe that nobody has open for writing is at its end then.
base::Result<base::Secret> readPasswordLine(int descriptor,
                                            const std::string& source,
                                            bool nonBlocking = false);

/// The password in such a line, whose end was taken off but for a carriage
/// return. A byte order mark before it is dropped. Wipes the line.
base::Result<base::Secret> passwordOf(std::string&& line,
                                      const std::string& source);

}  // namespace connection
