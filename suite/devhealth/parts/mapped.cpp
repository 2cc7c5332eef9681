#include "suite/devhealth/parts/mapped.h"

#include <string>

namespace devhealth {

using base::Failure;
using base::FailureKind;

std::optional<Failure> ReadTally::verdict() const {
  if (failure_) {
    return failure_;
  }
  if (read_ > 0 || unreadable_ == 0) {
    return std::nullopt;
  }
  Failure failure = first_;
  // Whatever kept the first part from being read, it is the content of the
  // list that is missing now. The user's own interrupt stays one.
  if (failure.kind != FailureKind::kInterrupted) {
    failure.kind = FailureKind::kBadContent;
  }
  if (unreadable_ > 1) {
    failure.cause = "none of " + std::to_string(unreadable_) +
                    " parts could be read; the first: " + failure.cause;
  }
  return failure;
}

std::optional<Failure> ReadTally::gap() const {
  if (unreadable_ == 0) {
    return std::nullopt;
  }
  Failure failure = first_;
  if (unreadable_ > 1) {
    failure.cause = std::to_string(unreadable_) +
                    " parts could not be read; the first: " + failure.cause;
  }
  return failure;
}

}  // namespace devhealth
