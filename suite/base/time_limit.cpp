#include "suite/base/time_limit.h"

#include "suite/platform/interrupt.h"

namespace base {
namespace {

constexpr unsigned long long kStepsPerLook = 256;

thread_local TimeLimit* innermost = nullptr;
thread_local unsigned long long steps = 0;

}  // namespace

TimeLimit::TimeLimit(Clock::time_point until)
    : until_(until), outer_(innermost) {
  innermost = this;
}

TimeLimit::~TimeLimit() { innermost = outer_; }

void heedTime() {
  if (++steps % kStepsPerLook != 0 || innermost == nullptr) {
    return;
  }
  if (platform::interrupted() || Clock::now() >= innermost->until_) {
    throw OutOfTime();
  }
}

unsigned long long stepsSoFar() { return steps; }

}  // namespace base
