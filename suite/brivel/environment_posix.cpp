#include "suite/brivel/environment.h"

#include <cstdlib>

namespace brivel {

std::string environmentValue(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace brivel
