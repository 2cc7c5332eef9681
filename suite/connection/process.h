#pragma once

#include <optional>
#include <string>

namespace connection {

// How a process guards what it knows, as the system does it.

/// From now on the process leaves no picture of its memory when it crashes.
void forbidMemoryDumps();

/// Takes a variable out of the environment, and overwrites it there. Nothing
/// when it is not set.
std::optional<std::string> takeVariable(const char* name);

}  // namespace connection
