#pragma once

#include <cstddef>

namespace platform {

// How a process protects what it has in memory, as the system does it.

/// Overwrites memory; the compiler may not drop it.
void overwrite(void* bytes, std::size_t size) noexcept;

/// From now on large blocks go back to the system as soon as they are freed, so
/// that what a run takes is what it holds.
void returnLargeBlocks();

/// From now on the process leaves no core dump when it crashes.
void disableCoreDumps();

}  // namespace platform
