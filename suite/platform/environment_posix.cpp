#include "suite/platform/environment.h"

#include <cstdlib>
#include <cstring>

#include "suite/platform/memory.h"

namespace platform {

std::string environmentValue(const char* name) {
  const char* const value = secure_getenv(name);
  return value == nullptr ? "" : value;
}

std::optional<std::string> takeEnvironmentVariable(const char* name) {
  char* const value = std::getenv(name);
  if (value == nullptr) {
    return std::nullopt;
  }
  std::string text(value);
  overwrite(value, std::strlen(value));
  unsetenv(name);
  return text;
}

}  // namespace platform
