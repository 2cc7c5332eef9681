#include "suite/base/integer.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using base::parseInteger;

TEST(ParseInteger, ReadsDigits) { EXPECT_EQ(base::parseInteger("42"), 42); }

TEST(ParseInteger, ReadsAMinus) { EXPECT_EQ(base::parseInteger("-7"), -7); }

TEST(ParseInteger, ReadsTheLimits) {
  EXPECT_EQ(base::parseInteger("2147483647"), 2147483647);
  EXPECT_EQ(base::parseInteger("-2147483648"), -2147483647 - 1);
}

TEST(ParseInteger, RefusesWhatIsTooLarge) {
  EXPECT_EQ(base::parseInteger("2147483648"), std::nullopt);
}

TEST(ParseInteger, RefusesTextAroundTheNumber) {
  EXPECT_EQ(base::parseInteger("1x"), std::nullopt);
  EXPECT_EQ(base::parseInteger(" 1"), std::nullopt);
  EXPECT_EQ(base::parseInteger("1 "), std::nullopt);
}

TEST(ParseInteger, RefusesAPlusAndABase) {
  EXPECT_EQ(base::parseInteger("+1"), std::nullopt);
  EXPECT_EQ(base::parseInteger("0x1"), std::nullopt);
}

TEST(ParseInteger, RefusesNothing) {
  EXPECT_EQ(base::parseInteger(""), std::nullopt);
}

}  // namespace
