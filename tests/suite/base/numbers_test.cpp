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
  EXPECT_EQ(decimal("1200"), 1200);
  EXPECT_EQ(decimal("-1"), -1);
  EXPECT_FALSE(decimal(""));
  EXPECT_FALSE(decimal("1200 RPM"));
}

TEST(Hexadecimal, TakesBothForms) {
  EXPECT_EQ(hexadecimal("0x8086"), 0x8086U);
  EXPECT_EQ(hexadecimal("1af4"), 0x1AF4U);
  EXPECT_FALSE(hexadecimal("0x"));
  EXPECT_FALSE(hexadecimal("0x1ffffffff"));
  EXPECT_FALSE(hexadecimal("pci"));
}

}  // namespace
}  // namespace base
