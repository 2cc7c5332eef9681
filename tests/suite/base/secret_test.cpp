#include "suite/base/secret.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace base {
namespace {

TEST(Wipe, LeavesNoByteBehind) {
  for (std::string secret : {std::string("short"), std::string(100, 'x')}) {
    const char* bytes = secret.data();
    const std::size_t capacity = secret.capacity();
    wipe(secret);
    EXPECT_TRUE(secret.empty());
    EXPECT_EQ(secret.data(), bytes);
    // An empty text whose room is as large as before: its bytes can be seen.
    secret.resize(capacity);
    EXPECT_TRUE(std::all_of(secret.begin(), secret.end(),
                            [](char c) { return c == '\0'; }));
  }
}

TEST(Wipe, EmptyTextStaysEmpty) {
  std::string secret;
  wipe(secret);
  EXPECT_TRUE(secret.empty());
}

}  // namespace
}  // namespace base
