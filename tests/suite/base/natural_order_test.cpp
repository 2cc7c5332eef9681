#include "suite/base/natural_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace base {
namespace {

TEST(CompareNaturally, RunOfDigitsIsOneNumber) {
  EXPECT_LT(compareNaturally("Fan 2", "Fan 10"), 0);
  EXPECT_GT(compareNaturally("Fan 10A", "Fan 9B"), 0);
  EXPECT_LT(compareNaturally("9", "18446744073709551616"), 0);
}

TEST(CompareNaturally, LeadingZerosDoNotCount) {
  EXPECT_EQ(compareNaturally("Bay 007", "Bay 7"), 0);
  EXPECT_LT(compareNaturally("Bay 007", "Bay 08"), 0);
  EXPECT_EQ(compareNaturally("0", "000"), 0);
}

TEST(CompareNaturally, LetterCaseDoesNotCount) {
  EXPECT_EQ(compareNaturally("DIMM a1", "Dimm A1"), 0);
  EXPECT_LT(compareNaturally("dimm", "FAN"), 0);
}

TEST(CompareNaturally, TextThatEndsFirstComesFirst) {
  EXPECT_LT(compareNaturally("Slot", "Slot 1"), 0);
  EXPECT_GT(compareNaturally("Slot 1", "Slot"), 0);
  EXPECT_LT(compareNaturally("", "a"), 0);
  EXPECT_EQ(compareNaturally("", ""), 0);
}

TEST(CompareNaturally, BytesBeyondAsciiAreGreater) {
  EXPECT_GT(compareNaturally("\xC3\xA9", "z"), 0);
}

TEST(CompareNaturally, OrdersWholeLists) {
  std::vector<std::string> names = {"n10", "N2",   "n1b",  "m",
                                    "n1",  "n1a2", "n1a10"};
  std::stable_sort(names.begin(), names.end(), naturallyBefore);
  EXPECT_EQ(names, (std::vector<std::string>{"m", "n1", "n1a2", "n1a10", "n1b",
                                             "N2", "n10"}));
}

}  // namespace
}  // namespace base
