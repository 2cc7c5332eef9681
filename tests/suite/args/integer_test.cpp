#include "suite/args/integer.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using args::parseInteger;

TEST(ParseInteger, ReadsDigits) { EXPECT_EQ(parseInteger("42"), 42); }

TEST(ParseInteger, ReadsAMinus) { EXPECT_EQ(parseInteger("-7"), -7); }

TEST(ParseInteger, ReadsTheLimits) {
  EXPECT_EQ(parseInteger("2147483647"), 2147483647);
  EXPECT_EQ(parseInteger("-2147483648"), -2147483647 - 1);
}

TEST(ParseInteger, RefusesWhatIsTooLarge) {
  EXPECT_EQ(parseInteger("2147483648"), std::nullopt);
}

TEST(ParseInteger, RefusesTextAroundTheNumber) {
  EXPECT_EQ(parseInteger("1x"), std::nullopt);
  EXPECT_EQ(parseInteger(" 1"), std::nullopt);
  EXPECT_EQ(parseInteger("1 "), std::nullopt);
}

TEST(ParseInteger, RefusesAPlusAndABase) {
  EXPECT_EQ(parseInteger("+1"), std::nullopt);
  EXPECT_EQ(parseInteger("0x1"), std::nullopt);
}

TEST(ParseInteger, RefusesNothing) {
  EXPECT_EQ(parseInteger(""), std::nullopt);
}

}  // namespace
