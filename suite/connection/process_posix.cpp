#include "suite/connection/process.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <cstdlib>
#include <cstring>

#include "suite/redfish/secret.h"

#if defined(__SANITIZE_ADDRESS__)
#define BRIVEL_IS_TRACED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BRIVEL_IS_TRACED
#endif
#endif

namespace connection {
namespace {

// A limit of size is not heeded by every program that systems hand dumps to.
void forbidTracing() {
  // The search for leaks at the end of a sanitized build is a trace, too.
#if !defined(BRIVEL_IS_TRACED)
  static_cast<void>(prctl(PR_SET_DUMPABLE, 0, 0, 0, 0));
#endif
}

}  // namespace

void forbidMemoryDumps() {
  forbidTracing();
  rlimit limit = {};
  if (getrlimit(RLIMIT_CORE, &limit) == 0) {
    limit.rlim_cur = 0;
    // Lowering a limit of one's own is always allowed.
    static_cast<void>(setrlimit(RLIMIT_CORE, &limit));
  }
}

std::optional<std::string> takeVariable(const char* name) {
  char* const value = std::getenv(name);
  if (value == nullptr) {
    return std::nullopt;
  }
  std::string text(value);
  redfish::overwrite(value, std::strlen(value));
  unsetenv(name);
  return text;
}

}  // namespace connection
