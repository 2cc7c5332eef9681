#pragma once

#include <string>
#include <system_error>

namespace brivel {

/// Why a file is no shared library that could be loaded here, in one clause:
/// it cannot be read, is no library, is made for another kind of machine, or
/// is truncated. Empty when nothing speaks against loading it. Loading a
/// truncated library would end the process, so this is asked first.
std::string objectionToLibrary(const std::string& file);

/// Why the system has just refused to load a library, in its own words.
/// `failure` is what the loading library says.
std::string reasonForRefusal(const std::error_code& failure);

}  // namespace brivel
