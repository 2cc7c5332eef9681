#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace devhealth {

/// A message with its arguments in place of "%1" to "%99" (DSP0266). The
/// longest number is meant: "%12" is the twelfth. An argument that is missing
/// becomes empty.
std::string substituteArguments(std::string_view message,
                                const std::vector<std::string>& arguments);

/// The text for an event without any: its key, and its arguments where it has
/// some.
std::string keyWithArguments(std::string_view key,
                             const std::vector<std::string>& arguments);

}  // namespace devhealth
