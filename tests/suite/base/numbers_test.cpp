#include "suite/base/numbers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace base {
namespace {

using testing::ElementsAre;
using testing::Pair;

TEST(NumberBehind, TakesWholeNamesOnly) {
  EXPECT_EQ(numberBehind("cpu12", "cpu"), 12U);
  EXPECT_FALSE(numberBehind("cpu", "cpu"));
  EXPECT_FALSE(numberBehind("cpufreq", "cpu"));
  EXPECT_FALSE(numberBehind("cpu1x", "cpu"));
  EXPECT_FALSE(numberBehind("cpu-1", "cpu"));
  EXPECT_FALSE(numberBehind("cpu99999999999", "cpu"));
  EXPECT_FALSE(numberBehind("gpu1", "cpu"));
}

TEST(Numbered, OrdersByNumber) {
  EXPECT_THAT(numbered({"hwmon10", "hwmon2", "other"}, "hwmon"),
              ElementsAre(Pair(2, "hwmon2"), Pair(10, "hwmon10")));
}

TEST(Decimal, TakesWholeNumbersOnly) {
  EXPECT_EQ(parseNumber<long>("1200"), 1200);
  EXPECT_EQ(parseNumber<long>("-1"), -1);
  EXPECT_FALSE(parseNumber<long>(""));
  EXPECT_FALSE(parseNumber<long>("1200 RPM"));
}

TEST(Hexadecimal, TakesBothForms) {
  EXPECT_EQ(hexadecimal("0x8086"), 0x8086U);
  EXPECT_EQ(hexadecimal("1af4"), 0x1AF4U);
  EXPECT_FALSE(hexadecimal("0x"));
  EXPECT_FALSE(hexadecimal("0x1ffffffff"));
  EXPECT_FALSE(hexadecimal("pci"));
}

}  // namespace
TEST(ParseNumber, ReadsDigits) { EXPECT_EQ(parseNumber<int>("42"), 42); }

TEST(ParseNumber, ReadsAMinus) { EXPECT_EQ(parseNumber<int>("-7"), -7); }

TEST(ParseNumber, ReadsTheLimits) {
  EXPECT_EQ(parseNumber<int>("2147483647"), 2147483647);
  EXPECT_EQ(parseNumber<int>("-2147483648"), -2147483647 - 1);
}

TEST(ParseNumber, RefusesWhatIsTooLarge) {
  EXPECT_EQ(parseNumber<int>("2147483648"), std::nullopt);
}

TEST(ParseNumber, RefusesTextAroundTheNumber) {
  EXPECT_EQ(parseNumber<int>("1x"), std::nullopt);
  EXPECT_EQ(parseNumber<int>(" 1"), std::nullopt);
  EXPECT_EQ(parseNumber<int>("1 "), std::nullopt);
}

TEST(ParseNumber, RefusesAPlusAndABase) {
  EXPECT_EQ(parseNumber<int>("+1"), std::nullopt);
  EXPECT_EQ(parseNumber<int>("0x1"), std::nullopt);
}

TEST(ParseNumber, RefusesNothing) {
  EXPECT_EQ(parseNumber<int>(""), std::nullopt);
}

TEST(ParseNumber, UnsignedRefusesAMinus) {
  EXPECT_EQ(parseNumber<std::uint16_t>("-1"), std::nullopt);
  EXPECT_EQ(parseNumber<std::uint16_t>("65535"), 65535);
  EXPECT_EQ(parseNumber<std::uint16_t>("65536"), std::nullopt);
}

TEST(ParseNumber, ReadsAnotherBase) {
  EXPECT_EQ(parseNumber<int>("ff", 16), 255);
}

TEST(ParseNumber, ReadsFractions) {
  EXPECT_EQ(parseNumber<double>("2.5"), 2.5);
  EXPECT_EQ(parseNumber<double>("2.5 V"), std::nullopt);
}

}  // namespace base
