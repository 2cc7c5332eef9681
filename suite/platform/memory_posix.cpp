#include "suite/platform/memory.h"

#include <malloc.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <cstring>  // With explicit_bzero, which is no C++.

#if defined(__SANITIZE_ADDRESS__)
#define BRIVEL_IS_TRACED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BRIVEL_IS_TRACED
#endif
#endif

namespace platform {
namespace {

// A limit of size is not heeded by every program that systems hand dumps to.
void forbidTracing() {
  // The search for leaks at the end of a sanitized build is a trace, too.
#if !defined(BRIVEL_IS_TRACED)
  static_cast<void>(prctl(PR_SET_DUMPABLE, 0, 0, 0, 0));
#endif
}

}  // namespace

void overwrite(void* bytes, std::size_t size) noexcept {
  explicit_bzero(bytes, size);
}

void returnLargeBlocks() {
  // Otherwise the size from which a block is one of its own grows with the
  // blocks that were freed, and smaller ones keep the room between them.
  constexpr int kLarge = 1 << 20;
  static_cast<void>(mallopt(M_MMAP_THRESHOLD, kLarge));
}

void returnFreed() { static_cast<void>(malloc_trim(0)); }

void disableCoreDumps() {
  forbidTracing();
  rlimit limit = {};
  if (getrlimit(RLIMIT_CORE, &limit) == 0) {
    limit.rlim_cur = 0;
    // Lowering a limit of one's own is always allowed.
    static_cast<void>(setrlimit(RLIMIT_CORE, &limit));
  }
}

}  // namespace platform
