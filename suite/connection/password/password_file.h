#pragma once

#include <string>

#include "suite/base/result.h"
#include "suite/base/secret.h"

namespace connection {

/// Reads the password in the first line of a file that belongs to this user or
/// to root (on Windows: the user, the administrators, the system), and that
/// only its owner can read. Any other file is refused, and so is a terminal. A
/// pipe is waited for while somebody has it open for writing.
base::Result<base::Secret> readPasswordFile(const std::string& file);

}  // namespace connection
