#pragma once

#include <optional>
#include <string>

#include "suite/base/failure.h"
#include "suite/base/secret.h"

namespace connection {

/// Reads the password that stands in the first line of a file that only its
/// owner can read; any other is refused. Nothing, and what is wrong in
/// `failure`, when there is none.
std::optional<base::Secret> readPasswordFile(const std::string& file,
                                             base::Failure& failure);

}  // namespace connection
