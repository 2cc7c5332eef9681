#include "tests/bmc/faults/number_range.h"

#include <gtest/gtest.h>

namespace bmc {
namespace {

TEST(ParseRange, OneNumber) {
  const auto range = parseRange("3");
  ASSERT_TRUE(range);
  EXPECT_FALSE(range->contains(2));
  EXPECT_TRUE(range->contains(3));
  EXPECT_FALSE(range->contains(4));
}

TEST(ParseRange, BothEndsBelongToIt) {
  const auto range = parseRange("3-5");
  ASSERT_TRUE(range);
  EXPECT_TRUE(range->contains(3));
  EXPECT_TRUE(range->contains(5));
  EXPECT_FALSE(range->contains(6));
}

TEST(ParseRange, OpenEndGoesOnForEver) {
  const auto range = parseRange("2-");
  ASSERT_TRUE(range);
  EXPECT_FALSE(range->contains(1));
  EXPECT_TRUE(range->contains(1'000'000'000'000));
}

TEST(ParseRange, OtherTextsAreRefused) {
  for (const char* text : {"", "-", "-3", "a", "3-a", "5-3", "3 "}) {
    EXPECT_FALSE(parseRange(text)) << text;
  }
}

}  // namespace
}  // namespace bmc
