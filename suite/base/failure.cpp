#include "suite/base/failure.h"

namespace base {

std::string describe(const Failure& failure) {
  std::string line;
  const auto append = [&line](const char* separator, const std::string& part) {
    if (part.empty()) {
      return;
    }
    if (!line.empty()) {
      line += separator;
    }
    line += part;
  };
  append("", failure.address);
  append(": ", failure.uri);
  append(": ", failure.cause);
  append("; ", failure.remedy);
  return line;
}

}  // namespace base
