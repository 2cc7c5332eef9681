#pragma once

#include <cstdint>
#include <string>

#include "syshealth/host/connect_info.h"

// The endings that the commands share: each writes what the user and the log
// are to see, in this order, and gives the command's result. `failureLine` is
// the command's own line, which begins with "Brivel failed to show ".

/// A service of the host is missing: nothing is written. Generic failure.
std::int32_t failMissingService();

/// The run failed with a result code: its message goes to the log only, then
/// the failure line is printed. The code as it is.
std::int32_t failWithCode(std::int32_t code, const std::string& failureLine);

/// The target cannot be reached; as `failWithCode` with that code.
std::int32_t failConnection(const std::string& failureLine);

/// The target's controller is not supported; as `failWithCode` with that code.
std::int32_t failNotSupported(const std::string& failureLine);

/// The list of targets cannot be had, or is empty (`error` is 0 then); as
/// `failWithCode` with the code that the connection-settings service gives for
/// the error, of which 16 bits are read.
std::int32_t failTargetList(ConnectionErr error,
                            const std::string& failureLine);

/// The "node" option names no target: an empty line and the reason are
/// printed. Generic failure.
std::int32_t failInvalidNode();

/// A target could not be read: an empty line and the failure line are printed,
/// the operation's exit is traced, and the status's message is printed. The
/// result code of the status.
std::int32_t failRead(int status, const std::string& failureLine,
                      const char* operation);
