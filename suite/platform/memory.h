#pragma once

#include <cstddef>

namespace platform {

// Protection of what a process has in memory.

/// Overwrites memory; the compiler may not drop it.
void overwrite(void* bytes, std::size_t size) noexcept;

/// From now on large blocks are returned to the system as soon as they are
/// freed, so that the process takes no more memory than it holds.
void returnLargeBlocks();

/// Returns to the system what was freed, in blocks of any size, by any thread.
/// Takes milliseconds.
void returnFreed();

/// From now on the process leaves no core dump when it crashes.
void disableCoreDumps();

}  // namespace platform
