#include "suite/base/time_limit.h"

#include <gtest/gtest.h>

namespace base {
namespace {

void work() {
  for (int step = 0; step < 1000; ++step) {
    heedTime();
  }
}

TEST(TimeLimit, WorkEndsWhenItHasPassed) {
  const TimeLimit limit(Clock::now());
  EXPECT_THROW(work(), OutOfTime);
}

TEST(TimeLimit, WorkGoesOnBeforeAndWithout) {
  EXPECT_NO_THROW(work());
  const TimeLimit limit(Clock::now() + std::chrono::hours(1));
  EXPECT_NO_THROW(work());
}

TEST(TimeLimit, InnermostHoldsUntilItIsLeft) {
  const TimeLimit outer(Clock::now());
  {
    const TimeLimit inner(Clock::time_point::max());
    EXPECT_NO_THROW(work());
  }
  EXPECT_THROW(work(), OutOfTime);
}

TEST(TimeLimit, StepsAreCounted) {
  const auto before = stepsSoFar();
  work();
  EXPECT_EQ(stepsSoFar() - before, 1000U);
}

}  // namespace
}  // namespace base
