#include "tests/bmc/service/target.h"

#include <gtest/gtest.h>

namespace bmc {
namespace {

TEST(ParseTarget, TrailingSlashMakesNoDifference) {
  EXPECT_EQ(parseTarget("/redfish/v1/")->path, "/redfish/v1");
  EXPECT_EQ(parseTarget("/redfish/v1")->path, "/redfish/v1");
}

TEST(ParseTarget, PathIsDecoded) {
  EXPECT_EQ(parseTarget("/redfish/v1/A%20B")->path, "/redfish/v1/A B");
}

TEST(ParseTarget, QueryIsTakenApart) {
  const auto target = parseTarget("/redfish/v1/A?$expand=.($levels=2)&$skip=5");
  ASSERT_TRUE(target);
  EXPECT_EQ(target->path, "/redfish/v1/A");
  EXPECT_EQ(target->parameter("$expand"), ".($levels=2)");
  EXPECT_EQ(target->parameter("$skip"), "5");
  EXPECT_EQ(target->parameter("$top"), std::nullopt);
}

TEST(ParseTarget, ParentSegmentIsRefused) {
  EXPECT_FALSE(parseTarget("/redfish/v1/../etc"));
  EXPECT_FALSE(parseTarget("/redfish/v1/%2e%2e/etc"));
}

TEST(ParseTarget, AbsoluteFormIsRefused) {
  EXPECT_FALSE(parseTarget("http://localhost/redfish/v1"));
}

}  // namespace
}  // namespace bmc
