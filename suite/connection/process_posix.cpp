#include "suite/connection/process.h"

#include <sys/resource.h>

#include <cstdlib>
#include <cstring>

#include "suite/redfish/secret.h"

namespace connection {

void forbidMemoryDumps() {
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
