#pragma once

#include <string>

#include "suite/base/result.h"
#include "suite/base/secret.h"

namespace connection {

/// Reads the password in the first line of a file that only its owner can
/// read. Any other file is refused.
base::Result<base::Secret> readPasswordFile(const std::string& file);

}  // namespace connection
