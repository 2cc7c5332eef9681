#include "suite/base/failure.h"

#include <utility>

namespace base {

Failure makeFailure(FailureKind kind, std::string cause) {
  Failure failure;
  failure.kind = kind;
  failure.cause = std::move(cause);
  return failure;
}

Failure usageFailure(std::string cause) {
  return makeFailure(FailureKind::kUsage, std::move(cause));
}

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
