#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "suite/base/result.h"
#include "suite/brivel/options/options.h"

namespace brivel {

/// The command line split into options and words; no value is checked yet.
/// Options are known by their names in the table that they were split by, whose
/// texts must stay alive.
struct ParsedArguments {
  /// The texts given to each option by its long name ("--bmc"), in order. A
  /// flag has "true" for each time it is given, and any text given to it by
  /// "=". Options that are not given are missing.
  std::map<std::string_view, std::vector<std::string>> options;
  /// The arguments that are no options: application, command, and any more.
  std::vector<std::string> words;
  /// Options that are not in the table, in order.
  std::vector<std::string> unknown;
};

/// Splits a command line by a table of options; the first argument is the
/// program's name. Options may stand anywhere before a "--". Fails if the last
/// argument is an option that lacks its value.
base::Result<ParsedArguments> splitArguments(int argc, const char* const* argv,
                                             const OptionList& options);

/// Splits a command line likewise, but no further than its first word. That
/// word and all that follow are in `words`, options included; an option before
/// it that is not in the table is in `unknown`.
base::Result<ParsedArguments> splitStart(int argc, const char* const* argv,
                                         const OptionList& options);

}  // namespace brivel
