#include "check/status.h"

#include <cstddef>

namespace check {
namespace {

// By the number of the status.
constexpr int kRanks[] = {0, 1, 3, 2};
constexpr const char* kStatusNames[] = {"OK", "WARNING", "CRITICAL", "UNKNOWN"};

}  // namespace

Status worse(Status left, Status right) {
  return kRanks[static_cast<std::size_t>(left)] <
                 kRanks[static_cast<std::size_t>(right)]
             ? right
             : left;
}

const char* nameOf(Status status) {
  return kStatusNames[static_cast<std::size_t>(status)];
}

}  // namespace check
