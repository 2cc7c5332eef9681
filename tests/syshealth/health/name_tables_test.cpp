#include "syshealth/health/name_tables.h"

#include <gmock/gmock.h>

#include "syshealth/health/orvane_type.h"

namespace {

using testing::ElementsAre;

TEST(AlertCategoryNamesTable, HasTheEightNamesInOrder) {
  EXPECT_THAT(AlertCategoryNames,
              ElementsAre("System", "Processors", "Cooling", "Memory", "PCI",
                          "Power", "Disks", "Other"));
}

TEST(AlertSeverityNamesTable, IsIndexedBySeverity) {
  EXPECT_THAT(AlertSeverityNames, ElementsAre("Normal", "Warning", "Error"));
}

TEST(OrvaneTypeNamesTable, IsIndexedByGeneration) {
  EXPECT_THAT(OrvaneTypeNames, ElementsAre("", "Orvane1", "Orvane2", "Dravik"));
  EXPECT_EQ(OrvaneTypeNames.at(Tarvex::Agentless::kOrvaneTypeUnknown), "");
  EXPECT_EQ(OrvaneTypeNames.at(Tarvex::Agentless::kOrvaneType1), "Orvane1");
  EXPECT_EQ(OrvaneTypeNames.at(Tarvex::Agentless::kOrvaneType2), "Orvane2");
  EXPECT_EQ(OrvaneTypeNames.at(Tarvex::Agentless::kOrvaneTypeDravik), "Dravik");
}

}  // namespace
