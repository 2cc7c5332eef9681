#include "tests/bmc/record/counters.h"

#include <gtest/gtest.h>

namespace bmc {
namespace {

TEST(Counters, SurviveTheRoadThroughJson) {
  Counters counters;
  counters.requests = 3;
  counters.sessionsOpen = 1;
  counters.requestsByMethod = {{"GET", 2}, {"POST", 1}};
  const Counters back = countersFromJson(toJson(counters));
  EXPECT_EQ(back.requests, 3U);
  EXPECT_EQ(back.sessionsOpen, 1U);
  EXPECT_EQ(back.connections, 0U);
  EXPECT_EQ(back.requestsByMethod, counters.requestsByMethod);
}

TEST(Counters, AreZeroWithoutText) {
  EXPECT_EQ(countersFromJson("").requests, 0U);
}

}  // namespace
}  // namespace bmc
