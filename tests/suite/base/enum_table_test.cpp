#include "suite/base/enum_table.h"

#include <gtest/gtest.h>

namespace {

enum class Colour { kRed, kGreen, kBlue };

struct Row {
  Colour colour;
  int value;
};

constexpr Row kWhole[] = {
    {Colour::kRed, 1}, {Colour::kGreen, 2}, {Colour::kBlue, 3}};
constexpr Row kShort[] = {{Colour::kRed, 1}, {Colour::kGreen, 2}};
constexpr Row kSwapped[] = {
    {Colour::kGreen, 2}, {Colour::kRed, 1}, {Colour::kBlue, 3}};
constexpr Row kTwice[] = {
    {Colour::kRed, 1}, {Colour::kRed, 1}, {Colour::kBlue, 3}};

TEST(HasRowForEach, WantsEveryEnumeratorOnceAndInOrder) {
  EXPECT_TRUE(base::hasRowForEach(kWhole, &Row::colour, Colour::kBlue));
  EXPECT_FALSE(base::hasRowForEach(kShort, &Row::colour, Colour::kBlue));
  EXPECT_FALSE(base::hasRowForEach(kSwapped, &Row::colour, Colour::kBlue));
  EXPECT_FALSE(base::hasRowForEach(kTwice, &Row::colour, Colour::kBlue));
}

}  // namespace
