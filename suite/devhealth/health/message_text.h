#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace devhealth {

/// A message with its arguments in place of "%1" to "%99" (DSP0266). "%12" is
/// the twelfth argument, not the first. A missing argument becomes empty.
std::string substituteArguments(std::string_view message,
                                const std::vector<std::string>& arguments);

/// The text for an event that has no message: its key, and its arguments if it
/// has any.
std::string keyWithArguments(std::string_view key,
                             const std::vector<std::string>& arguments);

}  // namespace devhealth
