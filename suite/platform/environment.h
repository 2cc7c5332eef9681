#pragma once

#include <optional>
#include <string>

namespace platform {

/// A variable of the environment as UTF-8; empty if it is not set, or if this
/// process has rights that who started it has not (set-user-ID, file
/// capabilities).
std::string environmentValue(const char* name);

/// Takes a variable out of the environment and overwrites its value there, so
/// that neither a child process nor /proc shows it. Where it stands there more
/// than once, that is done with each, and the first counts. Returns nullopt if
/// it is not set.
std::optional<std::string> takeEnvironmentVariable(const char* name);

}  // namespace platform
