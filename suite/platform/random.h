#pragma once

#include <cstddef>

namespace platform {

/// Fills memory with random bytes of the system's own generator, which nobody
/// can predict. Throws std::system_error if the system has none.
void fillRandom(void* bytes, std::size_t size);

}  // namespace platform
