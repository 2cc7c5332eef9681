#include "syshealth/inventory/labels.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

TEST(Labels, SystemBoard) {
  EXPECT_THAT(kSystemBoardLabels,
              ElementsAre("Machine Name", "Machine Type/Model", "Serial Number",
                          "UUID"));
}

TEST(Labels, Processor) {
  EXPECT_THAT(kProcessorLabels,
              ElementsAre("Name", "Family", "Current Frequency (MHz)",
                          "Max Turbo Frequency (MHz)", "Health state"));
}

TEST(Labels, Fan) {
  EXPECT_THAT(kFanLabels, ElementsAre("Name", "Desired Speed", "Health state"));
}

TEST(Labels, Dimm) {
  EXPECT_THAT(kDimmLabels,
              ElementsAre("Description", "Part Number", "FRU Serial Number",
                          "Manufacturer", "Type", "Max Memory Speed"));
}

TEST(Labels, Power) {
  EXPECT_THAT(kPowerLabels,
              ElementsAre("Name", "Total Output Power", "Health state"));
}

TEST(Labels, PciAdapterHasNoneForTheStatusDescriptions) {
  EXPECT_THAT(
      kPciAdapterLabels,
      ElementsAre("Name", "Tag", "Manufacturer", "Model", "SerialNumber",
                  "PartNumber", "FRU number", "OperationalStatus"));
}

TEST(Properties, Processor) {
  EXPECT_THAT(kProcessorProperties,
              ElementsAre("Name", "OtherFamilyDescription", "CurrentClockSpeed",
                          "MaxClockSpeed", "HealthState"));
}

TEST(Properties, Fan) {
  EXPECT_THAT(kFanProperties,
              ElementsAre("ElementName", "DesiredSpeed", "HealthState"));
}

TEST(Properties, Dimm) {
  EXPECT_THAT(kDimmProperties,
              ElementsAre("Description", "PartNumber", "SerialNumber",
                          "Manufacturer", "Model", "MaxMemorySpeed"));
}

TEST(Properties, Power) {
  EXPECT_THAT(kPowerProperties,
              ElementsAre("ElementName", "TotalOutputPower", "HealthState"));
}

TEST(Properties, PciAdapter) {
  EXPECT_THAT(kPciAdapterProperties,
              ElementsAre("Description", "Tag", "Manufacturer", "Model",
                          "SerialNumber", "PartNumber", "SKU",
                          "OperationalStatus", "StatusDescriptions"));
}

}  // namespace
