#pragma once

#include <string>
#include <vector>

namespace brivel {

/// Prints what may complete a command line, for the shells' completion: a
/// proposal a line, its help behind a tab. `words` are the arguments up to the
/// cursor. The exit status: 0, or `kExitFiles` if the name of a file completes
/// it. Writes no log, and no message: there is nobody to read them.
int runCompletion(const std::vector<std::string>& words);

constexpr int kExitFiles = 1;

}  // namespace brivel
