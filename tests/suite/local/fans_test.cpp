#include "suite/local/fans.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/suite/local/folder.h"

namespace local {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

TEST(FanFacts, ReadsEveryField) {
  Folder folder;
  folder.file("/sys/class/hwmon/hwmon0/name", "fanctl\n")
      .file("/sys/class/hwmon/hwmon0/fan1_label", "Rear\n")
      .file("/sys/class/hwmon/hwmon0/fan1_target", "5000\n")
      .file("/sys/class/hwmon/hwmon0/fan1_input", "4980\n");
  const auto fans = fanFacts(folder.root());
  ASSERT_THAT(fans, SizeIs(1));
  EXPECT_EQ(fans[0].chip, "fanctl");
  EXPECT_EQ(fans[0].input, "fan1");
  EXPECT_EQ(fans[0].label, "Rear");
  EXPECT_EQ(fans[0].targetRpm, 5000);
  EXPECT_EQ(fans[0].measuredRpm, 4980);
  EXPECT_EQ(fans[0].state, FanState::kOk);
}

TEST(FanFacts, OrderIsByChipThenByNumber) {
  Folder folder;
  for (const char* fan : {"hwmon10/fan1", "hwmon2/fan10", "hwmon2/fan9"}) {
    folder.file(std::string("/sys/class/hwmon/") + fan + "_input", "1\n");
  }
  folder.file("/sys/class/hwmon/hwmon2/name", "two\n");
  folder.file("/sys/class/hwmon/hwmon10/name", "ten\n");
  const auto fans = fanFacts(folder.root());
  ASSERT_THAT(fans, SizeIs(3));
  EXPECT_EQ(fans[0].input, "fan9");
  EXPECT_EQ(fans[1].input, "fan10");
  EXPECT_EQ(fans[2].chip, "ten");
}

TEST(FanFacts, FaultGoesBeforeAlarm) {
  const auto stateWith = [](const std::string& file) {
    Folder folder;
    folder.file("/sys/class/hwmon/hwmon0/fan1_input", "0\n")
        .file("/sys/class/hwmon/hwmon0/name", "fanctl\n")
        .file("/sys/class/hwmon/hwmon0/fan1_alarm",
              file == "both" ? "1\n" : "0\n")
        .file("/sys/class/hwmon/hwmon0/" +
                  (file == "both" ? std::string("fan1_fault") : file),
              "1\n");
    return fanFacts(folder.root()).at(0).state;
  };
  EXPECT_EQ(stateWith("fan1_fault"), FanState::kFault);
  EXPECT_EQ(stateWith("both"), FanState::kFault);
  EXPECT_EQ(stateWith("fan1_alarm"), FanState::kAlarm);
  EXPECT_EQ(stateWith("fan1_min_alarm"), FanState::kAlarm);
  EXPECT_EQ(stateWith("fan1_max_alarm"), FanState::kAlarm);
  EXPECT_EQ(stateWith("fan1_other"), FanState::kOk);
}

TEST(FanFacts, FanWithATargetAloneIsAFan) {
  Folder folder;
  folder.file("/sys/class/hwmon/hwmon0/name", "fanctl\n")
      .file("/sys/class/hwmon/hwmon0/fan3_target", "900\n");
  const auto fans = fanFacts(folder.root());
  ASSERT_THAT(fans, SizeIs(1));
  EXPECT_FALSE(fans[0].measuredRpm);
}

TEST(FanFacts, UnreadableSpeedsAreNone) {
  Folder folder;
  folder.file("/sys/class/hwmon/hwmon0/name", "fanctl\n")
      .file("/sys/class/hwmon/hwmon0/fan1_input", "fast\n");
  EXPECT_FALSE(fanFacts(folder.root()).at(0).measuredRpm);
}

TEST(FanFacts, OtherSensorsAreNoFans) {
  Folder folder;
  folder.file("/sys/class/hwmon/hwmon0/name", "chip\n")
      .file("/sys/class/hwmon/hwmon0/temp1_input", "40000\n")
      .file("/sys/class/hwmon/hwmon0/fan_input", "1\n")
      .file("/sys/class/hwmon/hwmon0/fan1_label", "Lonely\n")
      .file("/sys/class/hwmon/hwmon0/pwm1", "80\n");
  EXPECT_THAT(fanFacts(folder.root()), IsEmpty());
}

TEST(FanFacts, OldDriversKeepTheirsWithTheDevice) {
  Folder folder;
  folder.file("/sys/class/hwmon/hwmon0/device/name", "oldchip\n")
      .file("/sys/class/hwmon/hwmon0/device/fan1_input", "700\n");
  const auto fans = fanFacts(folder.root());
  ASSERT_THAT(fans, SizeIs(1));
  EXPECT_EQ(fans[0].chip, "oldchip");
  EXPECT_EQ(fans[0].measuredRpm, 700);
}

TEST(FanFacts, NoneWithoutTheFolder) {
  const Folder folder;
  EXPECT_THAT(fanFacts(folder.root()), IsEmpty());
}

}  // namespace
}  // namespace local
