#pragma once

#include <filesystem>
#include <string>

namespace platform {

/// Tries to open a file for appending; makes it, and the directories that are
/// missing above it, for its owner alone. On success `regular` tells whether
/// it is a regular file. False, and why in `reason`, when it cannot be
/// written.
bool prepareOwnedFile(const std::filesystem::path& file, bool& regular,
                      std::string& reason);

/// Makes a file for its owner alone, or takes the others' rights from one that
/// exists. What fails here shows when the file is opened.
void restrictToOwner(const std::filesystem::path& file);

}  // namespace platform
