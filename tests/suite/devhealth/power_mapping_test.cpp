#include "suite/devhealth/inventory/power_mapping.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/printed_table.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using Tarvex::DeviceHealth::Power;

Power onlyResource(const std::string& supply) {
  Server server;
  server.linked("Chassis/1", "PowerSubsystem", "{}");
  server.members("Chassis/1/PowerSubsystem", "PowerSupplies", {{"1", supply}});
  return printed(mapPowers(server.graph(), server.node())).records.at(0);
}

Power onlyEntry(const std::string& supply) {
  Server server;
  server.linked("Chassis/1", "Power", R"({"PowerSupplies": [)" + supply + "]}");
  return printed(mapPowers(server.graph(), server.node())).records.at(0);
}

TEST(MapPowers, FieldsOfASupplyResource) {
  const Power row = onlyResource(R"({"Name": "PSU 1",
      "PowerCapacityWatts": 800.0, "Status": {"Health": "Critical"}})");
  EXPECT_EQ(row.elementName, "PSU 1");
  EXPECT_EQ(row.totalOutputPower, "800 W");
  EXPECT_EQ(row.healthState, "Critical");
}

TEST(MapPowers, LargestInputRangeStandsInForTheCapacity) {
  EXPECT_EQ(onlyResource(R"({"PowerCapacityWatts": 0, "InputRanges":
      [{"CapacityWatts": 900}, null, {"CapacityWatts": "1200"}, {}]})")
                .totalOutputPower,
            "1200 W");
  EXPECT_EQ(onlyEntry(R"({"InputRanges":
      [{"OutputWattage": 500}, {"OutputWattage": 450}]})")
                .totalOutputPower,
            "500 W");
}

TEST(MapPowers, LoadIsNotTheRatedOutput) {
  EXPECT_EQ(onlyEntry(R"({"LastPowerOutputWatts": 92, "PowerOutputWatts": 90})")
                .totalOutputPower,
            "");
}

TEST(MapPowers, SupplyWithoutStatusIsUnknown) {
  EXPECT_EQ(onlyEntry(R"({"Name": "Left"})").healthState, "Unknown");
}

TEST(MapPowers, SupplyThatIsUnavailableStays) {
  const Power row = onlyEntry(R"({"Name": "Left",
      "Status": {"State": "UnavailableOffline", "Health": "Critical"}})");
  EXPECT_EQ(row.elementName, "Left");
  EXPECT_EQ(row.healthState, "Critical");
}

TEST(MapPowers, EntriesOfOneNameAreToldApart) {
  Server server;
  server.linked("Chassis/1", "Power",
                R"({"PowerSupplies": [{"Name": "Power Supply", "MemberId": 0},
                                      {"Name": "Power Supply"}]})");
  const auto rows = printed(mapPowers(server.graph(), server.node())).records;
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].elementName, "Power Supply 0");
  EXPECT_EQ(rows[1].elementName, "Power Supply 1");
}

TEST(MapPowers, EnclosurePowersANodeWithoutSupplies) {
  Server server("{}",
                R"({"Links": {"ContainedBy": )" + linkTo("Chassis/E") + "}}");
  server.put("Chassis/E", "{}");
  server.linked("Chassis/E", "Power",
                R"({"PowerSupplies": [{"Name": "Shared"}]})");
  const auto rows = printed(mapPowers(server.graph(), server.node())).records;
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].elementName, "Shared");
}

TEST(MapPowers, LinkedSuppliesOfAChassisCount) {
  Server server("{}", R"({"Links": {"PowerSupplies": [)" +
                          linkTo("Chassis/E/PowerSubsystem/PowerSupplies/2") +
                          "]}}");
  server.put("Chassis/E/PowerSubsystem/PowerSupplies/2",
             R"({"Name": "Second"})");
  const auto rows = printed(mapPowers(server.graph(), server.node())).records;
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].elementName, "Second");
}

}  // namespace
}  // namespace devhealth
