#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "suite/platform/files/descriptor.h"

namespace platform {

/// Whether a file belongs to this process's user or to root.
bool isOwnOrRoots(const struct stat& status);

/// Opens a folder step by step, for use with openat and its kin. A symbolic
/// link on the way is followed if it belongs to this user or to root. A folder
/// that is missing is made for its owner alone, if the one above belongs to
/// this user or to root. Returns an empty descriptor and sets `reason` if that
/// fails.
Descriptor openFolder(const std::filesystem::path& folder, std::string& reason);

}  // namespace platform
