#include "suite/platform/last_resort.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void hang() {
  while (true) {
    pause();
  }
}

TEST(LastResortDeathTest, WorkThatNeverEndsIsEnded) {
  EXPECT_EXIT(
      {
        const LastResort watch(Clock::now() - kLastResort);
        hang();
      },
      testing::ExitedWithCode(kLastResortStatus), "did not end in time");
}

TEST(LastResortDeathTest, LatestEndCounts) {
  EXPECT_EXIT(
      {
        const LastResort outer(Clock::now() + std::chrono::hours(1));
        const LastResort inner(Clock::now() - kLastResort);
        // More than an hour is left of the alarm.
        _exit(alarm(0) > 3600 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(LastResortDeathTest, NothingIsWatchedAfterwards) {
  EXPECT_EXIT(
      {
        { const LastResort watch(Clock::now()); }
        _exit(alarm(0) == 0 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(LastResortDeathTest, InterruptShortensTheTime) {
  EXPECT_EXIT(
      {
        const LastResort watch(Clock::now() + std::chrono::hours(1));
        interruptLastResort();
        _exit(alarm(0) <= 12 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(LastResortDeathTest, EndWithoutEndIsBorne) {
  EXPECT_EXIT(
      {
        const LastResort watch(Clock::time_point::max());
        _exit(alarm(0) > 3600 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace platform
