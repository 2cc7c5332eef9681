#pragma once

#include <functional>
#include <string>
#include <vector>

#include "suite/brivel/options/options.h"

namespace brivel {

/// A word that may stand in the place of the one that is being typed.
struct Proposal {
  std::string word;
  std::string help;  ///< One sentence; may be empty.
};

/// What may complete a command line.
struct Completion {
  std::vector<Proposal> proposals;
  bool files = false;  ///< The name of a file does; the shell knows them.
};

/// What completion asks of the installed system. Each is called only if the
/// command line needs it.
struct CompletionSources {
  /// The names of the applications.
  std::function<std::vector<std::string>()> applications;
  /// The options of an application, without the host's; empty if it cannot be
  /// loaded. Their texts must stay alive.
  std::function<OptionList(const std::string& application)> options;
  /// The names of the targets in a settings file; the empty name stands for
  /// the file of the usual places. Empty if it cannot be read.
  std::function<std::vector<std::string>(const std::string& file)> targets;
  /// The names of the groups there, likewise.
  std::function<std::vector<std::string>(const std::string& file)> groups;
};

/// What may stand in the place of the last of `words`, the arguments up to the
/// cursor, of which the last may be empty or half typed. Proposals begin with
/// what is typed already, and hold nothing that a shell would take for more
/// than text.
Completion complete(const std::vector<std::string>& words,
                    const CompletionSources& sources);

}  // namespace brivel
