#include "syshealth/host/connection_info.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Tarvex::TarvexConnection::ConnectionInfo;

// The fields by position, so that their order is part of the test.
TEST(ConnectionInfoTest, FieldsStandInOrderWithTheirDefaults) {
  const auto& [text1, number2, text3, text4, nodeIndex, number6, number7,
               number8] = ConnectionInfo();
  EXPECT_EQ(text1, "");
  EXPECT_EQ(number2, 0);
  EXPECT_EQ(text3, "");
  EXPECT_EQ(text4, "");
  EXPECT_EQ(nodeIndex, 0);
  EXPECT_EQ(number6, 3);
  EXPECT_EQ(number7, 0);
  EXPECT_EQ(number8, 0);
  static_assert(sizeof(number2) == 2 && sizeof(number6) == 2);
  static_assert(
      std::is_same_v<decltype(ConnectionInfo::nodeIndex), std::uint16_t>);
  static_assert(sizeof(number7) == 4 && sizeof(number8) == 8);
}

TEST(ConnectionInfoTest, CopyHasEveryField) {
  ConnectionInfo original = {"a", 1, "b", "c", 65535, 4, 5, 6};
  const ConnectionInfo copy = original;
  original = ConnectionInfo();
  const auto& [text1, number2, text3, text4, nodeIndex, number6, number7,
               number8] = copy;
  EXPECT_EQ(text1, "a");
  EXPECT_EQ(number2, 1);
  EXPECT_EQ(text3, "b");
  EXPECT_EQ(text4, "c");
  EXPECT_EQ(nodeIndex, 65535);
  EXPECT_EQ(number6, 4);
  EXPECT_EQ(number7, 5);
  EXPECT_EQ(number8, 6);
}

}  // namespace
