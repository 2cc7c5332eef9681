#pragma once

namespace platform {

/// Lets the system look for libraries by name only where the program lies and
/// in its own folder, for the rest of the process: not in the current folder,
/// nor in those of PATH, where others may have put one. For Windows; elsewhere
/// every library says where its own are, and nothing is done.
void limitLibrarySearch();

/// What the system's loader is told beside a library's absolute path, so that
/// libraries which that one needs are looked for in its folder, too. 0 where
/// there is nothing to tell.
int librarySearchFlags();

}  // namespace platform
