#pragma once

#include <string>

#include "suite/connection/secret.h"
#include "suite/redfish/failure.h"

namespace connection {

// The ways by which a password reaches the process. Each gives the first line
// of its source, without the line end; nothing, and what is wrong in
// `failure`, when there is no such line, it is empty, holds a NUL byte, or is
// longer than 1024 bytes.

/// From a file that only its owner can read; any other is refused.
std::optional<Secret> readPasswordFile(const std::string& file,
                                       redfish::Failure& failure);

/// From standard input, no byte beyond the line end being taken.
std::optional<Secret> readPasswordFromStdin(redfish::Failure& failure);

/// From the person at the terminal, who is asked with `question` and whose
/// answer is not shown. The failure is that of no password at all when
/// standard input is no terminal.
std::optional<Secret> askPassword(const std::string& question,
                                  redfish::Failure& failure);

}  // namespace connection
