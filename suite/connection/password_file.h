#pragma once

#include <optional>
#include <string>

#include "suite/connection/secret.h"
#include "suite/redfish/failure.h"

namespace connection {

/// Reads the password that stands in the first line of a file that only its
/// owner can read; any other is refused. Nothing, and what is wrong in
/// `failure`, when there is none.
std::optional<Secret> readPasswordFile(const std::string& file,
                                       redfish::Failure& failure);

}  // namespace connection
