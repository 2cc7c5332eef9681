#include "suite/base/result.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

base::Result<int> half(int number) {
  if (number % 2 != 0) {
    base::Failure failure;
    failure.cause = "it is odd";
    return failure;
  }
  return number / 2;
}

TEST(Result, HoldsAValue) {
  const auto result = half(4);
  ASSERT_TRUE(result);
  EXPECT_EQ(*result, 2);
}

TEST(Result, HoldsTheReason) {
  const auto result = half(3);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().cause, "it is odd");
}

TEST(Result, ThrowsWhenAskedForAValueThatIsNotThere) {
  EXPECT_THROW(static_cast<void>(half(3).value()), std::logic_error);
}

}  // namespace
