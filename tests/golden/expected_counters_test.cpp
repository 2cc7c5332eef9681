#include "tests/golden/expected_counters.h"

#include <gtest/gtest.h>

namespace golden {
namespace {

using Texts = std::vector<std::string>;

bmc::Counters counted() {
  bmc::Counters counters;
  counters.requests = 27;
  return counters;
}

TEST(UnmetCounters, MetExpectationsSayNothing) {
  EXPECT_EQ(unmetCounters("requests <= 27\nrequests == 27\nrequests >= 1\n",
                          counted()),
            Texts{});
}

TEST(UnmetCounters, EachUnmetExpectationTellsTheCount) {
  EXPECT_EQ(unmetCounters("requests <= 26\nconnections == 1\n", counted()),
            (Texts{"requests <= 26: was 27", "connections == 1: was 0"}));
}

TEST(UnmetCounters, UnknownCounterIsUnmet) {
  EXPECT_EQ(unmetCounters("reqests <= 27", counted()),
            Texts{"reqests <= 27: cannot be read"});
}

TEST(UnmetCounters, UnknownRelationIsUnmet) {
  EXPECT_EQ(unmetCounters("requests != 27", counted()),
            Texts{"requests != 27: was 27"});
}

TEST(UnmetCounters, MissingNumberIsUnmet) {
  EXPECT_EQ(unmetCounters("requests <=", counted()),
            Texts{"requests <=: cannot be read"});
}

}  // namespace
}  // namespace golden
