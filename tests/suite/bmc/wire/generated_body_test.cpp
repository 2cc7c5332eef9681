#include "tests/bmc/wire/generated_body.h"

#include <gtest/gtest.h>

namespace bmc {
namespace {

std::string all(Body& body, std::size_t limit) {
  std::string text;
  for (std::string_view bytes; !(bytes = body.next(limit)).empty();) {
    EXPECT_LE(bytes.size(), limit);
    text += bytes;
  }
  return text;
}

TEST(GeneratedBody, PartsAreRepeatedInOrder) {
  GeneratedBody body({{"[", 3}, {"1", 1}, {"]", 3}});
  EXPECT_EQ(body.size(), 7U);
  EXPECT_EQ(all(body, 2), "[[[1]]]");
}

TEST(GeneratedBody, MarkBecomesTheNumberOfTheRepetition) {
  GeneratedBody body({{"a#########,", 3}});
  EXPECT_EQ(all(body, 1000), "a000000000,a000000001,a000000002,");
  EXPECT_EQ(body.size(), 33U);
}

TEST(GeneratedBody, LengthIsKnownBeyondMemory) {
  GeneratedBody body({{"0123456789", 1'000'000'000'000}});
  EXPECT_EQ(body.size(), 10'000'000'000'000U);
  EXPECT_EQ(body.next(12), "012345678901");
}

TEST(GeneratedBody, NothingTimesIsNothing) {
  GeneratedBody body({{"a", 0}, {"", 5}, {"b", 1}});
  EXPECT_EQ(all(body, 10), "b");
}

TEST(Noise, IsTheSameEveryTime) {
  EXPECT_EQ(noise(100).size(), 100U);
  EXPECT_EQ(noise(100), noise(100));
}

}  // namespace
}  // namespace bmc
