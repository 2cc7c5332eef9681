#include "suite/devhealth/inventory/fan_mapping.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/printed_table.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using Tarvex::DeviceHealth::Fan;

std::vector<std::string> fanNames(const Mapped<Fan>& result) {
  EXPECT_FALSE(result.failure.has_value());
  std::vector<std::string> found;
  for (const Fan& fan : result.records) {
    found.push_back(fan.elementName);
  }
  return found;
}

using Names = std::vector<std::string>;
using Members = std::vector<std::pair<std::string, std::string>>;

// A chassis with a subsystem whose fans are as given.
Server modernServer(const Members& fans) {
  Server server;
  server.linked("Chassis/1", "ThermalSubsystem", "{}");
  server.members("Chassis/1/ThermalSubsystem", "Fans", fans);
  return server;
}

std::string modernSpeed(const std::string& fan) {
  const Server server = modernServer({{"1", fan}});
  return printed(mapFans(server.graph(), server.node()))
      .records.at(0)
      .desiredSpeed;
}

std::string oldSpeed(const std::string& fan) {
  Server server;
  server.linked("Chassis/1", "Thermal", R"({"Fans": [)" + fan + "]}");
  return printed(mapFans(server.graph(), server.node()))
      .records.at(0)
      .desiredSpeed;
}

TEST(MapFans, FieldsOfAFanResource) {
  const Server server = modernServer({{"1", R"({"Name": "Fan Bay 1",
      "SpeedPercent": {"Reading": 45, "SpeedRPM": 2200.0},
      "Status": {"Health": "Warning"}})"}});
  const auto rows = printed(mapFans(server.graph(), server.node())).records;
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].elementName, "Fan Bay 1");
  EXPECT_EQ(rows[0].desiredSpeed, "2200 RPM");
  EXPECT_EQ(rows[0].healthState, "Warning");
}

TEST(MapFans, SpeedOfAFanResource) {
  EXPECT_EQ(modernSpeed(R"({"SpeedPercent": {"Reading": 45.25}})"), "45.3 %");
  EXPECT_EQ(modernSpeed(R"({"SpeedPercent":
                            {"Reading": 45, "SpeedRPM": null}})"),
            "45 %");
  EXPECT_EQ(modernSpeed(R"({"SpeedPercent": 40})"), "40 %");
  EXPECT_EQ(modernSpeed(R"({"SpeedPercent": {"SpeedRPM": 0}})"), "0 RPM");
  EXPECT_EQ(modernSpeed(R"({"SpeedPercent": {"SpeedRPM": -1}})"), "");
  EXPECT_EQ(modernSpeed(R"({"SpeedPercent": {"SpeedRPM": "8400"}})"),
            "8400 RPM");
  EXPECT_EQ(modernSpeed(R"({"SpeedPercent": null})"), "");
}

TEST(MapFans, SecondRotorIsIgnored) {
  EXPECT_EQ(modernSpeed(R"({"SecondarySpeedPercent": {"Reading": 9}})"), "");
}

TEST(MapFans, SpeedOfAnEntry) {
  EXPECT_EQ(oldSpeed(R"({"Reading": 2100, "ReadingUnits": "RPM"})"),
            "2100 RPM");
  EXPECT_EQ(oldSpeed(R"({"Reading": 100, "ReadingUnits": "Percent"})"),
            "100 %");
  EXPECT_EQ(oldSpeed(R"({"Reading": 101})"), "101 RPM");
  EXPECT_EQ(oldSpeed(R"({"Reading": 100})"), "100 %");
  EXPECT_EQ(oldSpeed(R"({"Reading": null, "ReadingRPM": 900})"), "900 RPM");
  EXPECT_EQ(oldSpeed(R"({"Reading": -1})"), "");
}

TEST(MapFans, EntriesAreNamedByTheirOldLocator) {
  Server server;
  server.linked("Chassis/1", "Thermal",
                R"({"Fans": [{"Name": "Fan", "FanName": "Front", "MemberId": 1},
                             {"MemberId": "2"}, 7, null]})");
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"Fan 2", "Front"}));
}

TEST(MapFans, SubsystemWinsOverTheOlderDocument) {
  Server server = modernServer({{"1", R"({"Name": "New"})"}});
  server.linked("Chassis/1", "Thermal", R"({"Fans": [{"Name": "Old"}]})");
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"New"}));
}

TEST(MapFans, OlderDocumentStandsInForAnEmptySubsystem) {
  Server server = modernServer({});
  server.linked("Chassis/1", "Thermal", R"({"Fans": [{"Name": "Old"}]})");
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"Old"}));
}

TEST(MapFans, OlderDocumentStandsInForAnUnreadableSubsystem) {
  Server server;
  server.linked("Chassis/1", "ThermalSubsystem", kBroken);
  server.linked("Chassis/1", "Thermal", R"({"Fans": [{"Name": "Old"}]})");
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"Old"}));
}

TEST(MapFans, OlderDocumentStandsInForUnreadableFans) {
  Server server = modernServer({{"1", std::string(kBroken)}});
  server.linked("Chassis/1", "Thermal", R"({"Fans": [{"Name": "Old"}]})");
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"Old"}));
}

TEST(MapFans, UnreadableSubsystemAloneIsAFailure) {
  Server server;
  server.linked("Chassis/1", "ThermalSubsystem", kBroken);
  EXPECT_TRUE(
      printed(mapFans(server.graph(), server.node())).failure.has_value());
}

TEST(MapFans, UnreadableOlderDocumentIsAFailure) {
  Server server;
  server.linked("Chassis/1", "Thermal", kBroken);
  EXPECT_TRUE(
      printed(mapFans(server.graph(), server.node())).failure.has_value());
}

TEST(MapFans, UnreadableChassisOfTheSystemIsAFailure) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  server.put("Chassis/1", kBroken);
  EXPECT_TRUE(
      printed(mapFans(server.graph(), server.node())).failure.has_value());
}

TEST(MapFans, UnreadableOnlyChassisIsAFailure) {
  Server server;
  server.put("Chassis/1", kBroken);
  EXPECT_TRUE(
      printed(mapFans(server.graph(), server.node())).failure.has_value());
}

TEST(MapFans, UnreadableFanHasARow) {
  const Server server = modernServer(
      {{"1", R"({"Name": "First"})"}, {"2", std::string(kBroken)}});
  const auto result = printed(mapFans(server.graph(), server.node()));
  EXPECT_EQ(fanNames(result), (Names{"2", "First"}));
  EXPECT_EQ(result.records[0].healthState, "Unknown");
  ASSERT_TRUE(result.gap.has_value());
  EXPECT_EQ(result.gap->kind, base::FailureKind::kServerError);
}

TEST(MapFans, ReadFansLeaveNoGap) {
  const Server server = modernServer({{"1", R"({"Name": "First"})"}});
  EXPECT_FALSE(mapFans(server.graph(), server.node()).gap.has_value());
}

TEST(MapFans, AbsentFansHaveNoRows) {
  const Server server =
      modernServer({{"1", R"({"Name": "First"})"},
                    {"2", R"({"Status": {"State": "Absent"}})"}});
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"First"}));
}

TEST(MapFans, ServerWithoutFansHasAnEmptyTable) {
  const Server server;
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))), Names{});
}

TEST(MapFans, RowsAreInNaturalOrder) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/B") + "," +
                linkTo("Chassis/A") + "]}}");
  for (const std::string chassis : {"A", "B"}) {
    server.put("Chassis/" + chassis, "{}");
    server.linked("Chassis/" + chassis, "Thermal",
                  R"({"Fans": [{"Name": "Fan of )" + chassis + R"("}]})");
  }
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"Fan of A", "Fan of B"}));
}

constexpr const char* kTwoFans =
    R"({"Fans": [{"Name": "One"}, {"Name": "Two"}]})";

TEST(MapFans, CoolingLinksLeadIntoTheOlderDocument) {
  Server server("{}", R"({"Links": {"CooledBy": [
      {"@odata.id": "/redfish/v1/Chassis/E/Thermal#/Fans/1"},
      {"@odata.id": "/redfish/v1/Chassis/E/Thermal/#/Fans/1"},
      {"@odata.id": "/redfish/v1/Chassis/E/Thermal#/Temperatures/0"},
      {"@odata.id": "/redfish/v1/Chassis/E/Thermal#/Fans/9"}]}})");
  server.put("Chassis/E/Thermal", kTwoFans);
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"Two"}));
}

TEST(MapFans, CoolingLinksLeadToFansAndNotToPumps) {
  Server server(R"({"Links": {"CooledBy": [
      {"@odata.id": "/redfish/v1/Chassis/E/ThermalSubsystem/Fans/1"},
      {"@odata.id": "/redfish/v1/Chassis/E/ThermalSubsystem/Pumps/1"},
      {"@odata.id": "/redfish/v1/Elsewhere/7"}]}})");
  server.put("Chassis/E/ThermalSubsystem/Fans/1", R"({"Name": "Shared"})");
  server.put("Chassis/E/ThermalSubsystem/Pumps/1", R"({"Name": "Pump"})");
  server.put("Elsewhere/7",
             R"({"@odata.type": "#Fan.v1_5_0.Fan", "Name": "Far"})");
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"Far", "Shared"}));
}

TEST(MapFans, CoolingLinksLeadToAChassis) {
  Server server(R"({"Links": {"CooledBy": [)" + linkTo("Chassis/E") + "]}}");
  server.put("Chassis/E", R"({"@odata.type": "#Chassis.v1_25_0.Chassis"})");
  server.linked("Chassis/E", "Thermal", kTwoFans);
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"One", "Two"}));
}

TEST(MapFans, OneChassisIsNeverListedInBothModels) {
  Server server = modernServer({{"1", R"({"Name": "New"})"}});
  server.put("Systems/1", R"({"Links": {"CooledBy": [
      {"@odata.id": "/redfish/v1/Chassis/1/Thermal#/Fans/0"}]}})");
  server.linked("Chassis/1", "Thermal", kTwoFans);
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"New"}));
}

TEST(MapFans, NearestEnclosureWithFansIsAsked) {
  Server server(
      "{}", R"({"Links": {"ContainedBy": )" + linkTo("Chassis/Shelf") + "}}");
  server.put("Chassis/Shelf",
             R"({"Links": {"ContainedBy": )" + linkTo("Chassis/Rack") + "}}");
  server.put("Chassis/Rack",
             R"({"Links": {"ContainedBy": )" + linkTo("Chassis/Row") + "}}");
  server.put("Chassis/Row", "{}");
  server.linked("Chassis/Rack", "Thermal", kTwoFans);
  server.linked("Chassis/Row", "Thermal", R"({"Fans": [{"Name": "Far"}]})");
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"One", "Two"}));
}

TEST(MapFans, EnclosureIsNotAskedWhenTheNodeHasFans) {
  Server server(
      "{}", R"({"Links": {"ContainedBy": )" + linkTo("Chassis/Shelf") + "}}");
  server.linked("Chassis/1", "Thermal", R"({"Fans": [{"Name": "Own"}]})");
  server.put("Chassis/Shelf", "{}");
  server.linked("Chassis/Shelf", "Thermal", kTwoFans);
  EXPECT_EQ(fanNames(printed(mapFans(server.graph(), server.node()))),
            (Names{"Own"}));
}

}  // namespace
}  // namespace devhealth
