#include "suite/platform/memory.h"

#include <windows.h>

namespace platform {

void overwrite(void* bytes, std::size_t size) noexcept {
  SecureZeroMemory(bytes, size);
}

void returnLargeBlocks() {
  // They do so by themselves.
}

void returnFreed() {
  // Blocks are returned by themselves.
}

void disableCoreDumps() {
  // Without its dialogue, error reporting makes no dump either.
  SetErrorMode(GetErrorMode() | SEM_NOGPFAULTERRORBOX);
}

}  // namespace platform
