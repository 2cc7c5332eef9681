#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace brivel {

/// The command line cut into options and the rest, before anything is made of
/// it.
struct RawArguments {
  /// Texts given to each option, by its long name ("--bmc"), in order; a flag
  /// has "true" for each time. Options that are not given are not in it. The
  /// two arguments that are no options go by APPLICATION and COMMAND.
  std::map<std::string, std::vector<std::string>, std::less<>> options;
  /// What no option took, in order.
  std::vector<std::string> unknown;
};

/// Cuts a command line; the first argument is the program's name. Options may
/// stand anywhere before a "--". Nothing when an option at the end lacks its
/// value, and the reason in `error`.
std::optional<RawArguments> cutArguments(int argc, const char* const* argv,
                                         std::string& error);

}  // namespace brivel
