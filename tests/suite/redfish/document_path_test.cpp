#include "suite/redfish/graph/document_path.h"

#include <gtest/gtest.h>

namespace redfish {
namespace {

TEST(LiesWithin, HolderItselfAndItsPartsDo) {
  EXPECT_TRUE(liesWithin("/redfish/v1/Chassis/1", "/redfish/v1/Chassis/1"));
  EXPECT_TRUE(
      liesWithin("/redfish/v1/Chassis/1/Thermal", "/redfish/v1/Chassis/1"));
}

TEST(LiesWithin, ComparesWholeSegments) {
  EXPECT_FALSE(liesWithin("/redfish/v1/Chassis/11", "/redfish/v1/Chassis/1"));
  EXPECT_FALSE(liesWithin("/redfish/v1/Chassis", "/redfish/v1/Chassis/1"));
}

TEST(LiesWithin, NothingLiesInAnEmptyHolder) {
  EXPECT_FALSE(liesWithin("/redfish/v1", ""));
}

TEST(ParentOf, CutsTheLastSegment) {
  EXPECT_EQ(parentOf("/redfish/v1/Chassis/1"), "/redfish/v1/Chassis");
  EXPECT_EQ(parentOf("/redfish"), "");
  EXPECT_EQ(parentOf(""), "");
}

TEST(SegmentOf, CountsFromTheFirst) {
  EXPECT_EQ(segmentOf("/redfish/v1/Chassis/1", 0), "redfish");
  EXPECT_EQ(segmentOf("/redfish/v1/Chassis/1", 3), "1");
}

TEST(SegmentOf, IsEmptyBeyondTheLast) {
  EXPECT_EQ(segmentOf("/redfish/v1", 2), "");
  EXPECT_EQ(segmentOf("", 0), "");
}

}  // namespace
}  // namespace redfish
