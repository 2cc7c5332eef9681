#include "check/ignore_list.h"

#include <gtest/gtest.h>

namespace check {
namespace {

Finding lostInput() {
  Finding finding;
  finding.category = report::Category::kPower;
  finding.messageId = "PowerAlerts.1.0.InputLost";
  finding.origin = "/redfish/v1/Chassis/1/PowerSubsystem/PowerSupplies/2";
  finding.text = "Power Supply 2 has lost its input power.";
  return finding;
}

bool covers(const char* list) { return IgnoreList(list).covers(lostInput()); }

TEST(IgnoreList, CoversCategories) {
  EXPECT_TRUE(covers("power"));
  EXPECT_TRUE(covers("Power"));
  EXPECT_FALSE(covers("memory"));
  EXPECT_FALSE(covers("pow"));
}

TEST(IgnoreList, CoversMessageIds) {
  EXPECT_TRUE(covers("PowerAlerts.1.0.InputLost"));
  EXPECT_TRUE(covers("inputlost"));
  EXPECT_FALSE(covers("Lost"));
  EXPECT_FALSE(covers("PowerAlerts"));
  EXPECT_FALSE(covers("PowerAlerts.1.0.InputLost2"));
}

TEST(IgnoreList, CoversOriginsAndWhatIsBelowThem) {
  EXPECT_TRUE(covers("/redfish/v1/Chassis/1/PowerSubsystem/PowerSupplies/2"));
  EXPECT_TRUE(covers("/redfish/v1/Chassis/1/PowerSubsystem/"));
  EXPECT_FALSE(covers("/redfish/v1/Chassis/1/Power"));
  EXPECT_FALSE(covers("/"));
}

TEST(IgnoreList, HasEntriesWithCommasBetween) {
  EXPECT_TRUE(covers("memory, power"));
  EXPECT_FALSE(covers("memory,disks"));
}

TEST(IgnoreList, CoversNothingWithoutEntries) {
  EXPECT_FALSE(IgnoreList().covers(lostInput()));
  EXPECT_FALSE(covers(""));
  EXPECT_FALSE(covers(" , "));
  Finding bare = lostInput();
  bare.messageId.clear();
  bare.origin.clear();
  EXPECT_FALSE(IgnoreList(",").covers(bare));
}

}  // namespace
}  // namespace check
