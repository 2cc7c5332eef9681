#include "suite/local/controller/connect_race.h"

#include <gtest/gtest.h>

#include "tests/suite/local/loopback.h"

namespace local {
namespace {

using namespace std::chrono_literals;

constexpr char kLoopback[] = "127.0.0.1";

TEST(FirstToAccept, DeadEndpointsCostTheLivingOneNothing) {
  const SilentPort silent;
  const LivingPort living;
  // Whoever waits for the silent one waits longer than a test may take.
  EXPECT_EQ(firstToAccept({{kLoopback, silent.port()},
                           {kLoopback, deadPort()},
                           {kLoopback, living.port()}},
                          1h),
            2U);
}

TEST(FirstToAccept, NoneWhereNoneAccepts) {
  EXPECT_FALSE(firstToAccept({{kLoopback, deadPort()}}, 1h));
  EXPECT_FALSE(firstToAccept({}, 1h));
}

TEST(FirstToAccept, LimitEndsTheWait) {
  const SilentPort silent;
  EXPECT_FALSE(firstToAccept({{kLoopback, silent.port()}}, 10ms));
}

TEST(FirstToAccept, HostNamesAreNotTried) {
  const LivingPort living;
  EXPECT_FALSE(firstToAccept({{"localhost", living.port()}}, 1h));
}

}  // namespace
}  // namespace local
