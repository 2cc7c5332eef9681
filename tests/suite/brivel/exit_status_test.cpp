#include "suite/brivel/exit_status.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using brivel::exitStatusOf;

TEST(ExitStatusOf, SuccessIsZero) { EXPECT_EQ(exitStatusOf(0), 0); }

TEST(ExitStatusOf, SuiteWideCodesAndTheirUnionsAreHandedOn) {
  EXPECT_EQ(exitStatusOf(1), 1);
  EXPECT_EQ(exitStatusOf(13), 13);
  EXPECT_EQ(exitStatusOf(13 | 25), 29);
  EXPECT_EQ(exitStatusOf(63), 63);
}

TEST(ExitStatusOf, AllOthersAreOneStatus) {
  EXPECT_EQ(exitStatusOf(64), 64);
  EXPECT_EQ(exitStatusOf(256), 64);
  EXPECT_EQ(exitStatusOf(0x1006A), 64);
  EXPECT_EQ(exitStatusOf(-1), 64);
  EXPECT_EQ(exitStatusOf(std::numeric_limits<int>::min()), 64);
}

}  // namespace
