#pragma once

#include <string>
#include <system_error>

namespace brivel {

/// Checks whether a file is a shared library for this machine. Returns the
/// reason why not in one clause (it cannot be read, is no library, is made for
/// another kind of machine, is truncated), or an empty text. Loading a
/// truncated library would end the process, so this comes first.
std::string problemWithLibrary(const std::string& file);

/// Why the system has just refused to load a library, in the system's own
/// words. `failure` is the error of the call that loaded it.
std::string loadError(const std::error_code& failure);

}  // namespace brivel
