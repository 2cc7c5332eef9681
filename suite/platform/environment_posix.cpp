#include "suite/platform/environment.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "suite/platform/memory.h"

namespace platform {

std::string environmentValue(const char* name) {
  const char* const value = secure_getenv(name);
  return value == nullptr ? "" : value;
}

std::optional<std::string> takeEnvironmentVariable(const char* name) {
  const std::string prefix = std::string(name) + "=";
  std::optional<std::string> text;
  // A program may be given a variable twice; getenv finds the first.
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    if (std::strncmp(*entry, prefix.c_str(), prefix.size()) == 0) {
      char* const value = *entry + prefix.size();
      if (!text) {
        text = value;
      }
      overwrite(value, std::strlen(value));
    }
  }
  unsetenv(name);
  return text;
}

}  // namespace platform
