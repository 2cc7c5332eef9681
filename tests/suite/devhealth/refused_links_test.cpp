// What a link that is refused keeps from being known: it is told as what
// cannot be read is.
#include <gtest/gtest.h>

#include "suite/devhealth/inventory/dimm_mapping.h"
#include "suite/devhealth/inventory/fan_mapping.h"
#include "suite/devhealth/inventory/pci_mapping.h"
#include "tests/suite/devhealth/alert_reading.h"
#include "tests/suite/devhealth/server.h"

namespace devhealth {
namespace {

const std::string kOk = R"("Status": {"Health": "OK"})";

// A link that leaves /redfish/.
const std::string kAway = R"({"@odata.id": "/admin/secret"})";

std::string object(const std::string& name, const std::string& value,
                   const std::string& more = R"("X": 1)") {
  return R"({")" + name + R"(": )" + value + ", " + more + "}";
}

std::string failureIn(const Server& server, bool thorough = false) {
  const auto failure = readingOf(server, thorough).failure;
  return failure ? failure->cause : "";
}

std::string gapIn(const Server& server) {
  const HealthReading reading = readingOf(server);
  EXPECT_FALSE(reading.failure.has_value()) << reading.failure->cause;
  return reading.gap ? reading.gap->cause : "";
}

std::string refusedLink(const std::string& name) {
  return "its link to " + name + " does not stay below /redfish/";
}

TEST(RefusedLink, OfAListOfASystemIsAFailure) {
  for (const std::string list : {"Processors", "Memory", "Storage",
                                 "SimpleStorage", "NetworkInterfaces"}) {
    EXPECT_EQ(failureIn(Server(object(list, kAway))), refusedLink(list));
  }
}

TEST(RefusedLink, OfAListOfAChassisIsAFailure) {
  for (const std::string list :
       {"ThermalSubsystem", "Thermal", "PowerSubsystem", "Power", "PCIeDevices",
        "NetworkAdapters"}) {
    EXPECT_EQ(failureIn(Server("{}", object(list, kAway))), refusedLink(list));
  }
}

TEST(RefusedLink, OfAListInsideASubsystemIsAFailure) {
  for (const auto& [subsystem, collection] :
       {std::pair<std::string, std::string>{"ThermalSubsystem", "Fans"},
        {"PowerSubsystem", "PowerSupplies"},
        {"PowerSubsystem", "Batteries"}}) {
    Server server;
    server.linked("Chassis/1", subsystem, object(collection, kAway));
    EXPECT_EQ(failureIn(server), refusedLink(collection));
  }
}

TEST(RefusedLink, OfABranchThatItsRollupKeepsClosedIsNone) {
  Server server(object("Memory", kAway, R"("MemorySummary": {)" + kOk + "}"));
  server.linked("Chassis/1", "ThermalSubsystem", object("Fans", kAway, kOk));
  server.members("Systems/1", "Storage",
                 {{"S", object("Volumes", kAway, kOk)}});
  EXPECT_EQ(failureIn(server), "");
  EXPECT_EQ(failureIn(server, true), refusedLink("Memory"));
}

TEST(RefusedLink, OfABranchThatMayExplainItsHolderIsAFailure) {
  const Server server(object(
      "Memory", kAway,
      R"("Status": {"Health": "Warning"}, "MemorySummary": {)" + kOk + "}"));
  EXPECT_EQ(unexplainedOf(readingOf(server)), (Lines{"Systems/1"}));
  const HealthReading again =
      readEvents(server.graph(), server.topology(), server.node(),
                 {false, {"/redfish/v1/Systems/1"}});
  ASSERT_TRUE(again.failure.has_value());
  EXPECT_EQ(again.failure->cause, refusedLink("Memory"));
}

TEST(RefusedLink, OfWhatAnotherListStandsInForIsNone) {
  Server server(object("SimpleStorage", kAway));
  server.members("Systems/1", "Storage", {{"S", "{}"}});
  server.put("Systems/1/Storage/S",
             object("Controllers", kAway, R"("StorageControllers": [{}])"));
  server.members("Chassis/1", "PCIeDevices", {{"1", "{}"}});
  EXPECT_EQ(failureIn(server), "");

  Server fans("{}", object("Thermal", kAway));
  fans.linked("Chassis/1", "ThermalSubsystem", "{}");
  fans.members("Chassis/1/ThermalSubsystem", "Fans", {{"1", "{}"}});
  EXPECT_EQ(failureIn(fans), "");

  Server older("{}", object("ThermalSubsystem", kAway));
  older.linked("Chassis/1", "Thermal", "{}");
  EXPECT_EQ(failureIn(older), "");
}

TEST(RefusedLink, OfOneMemberIsAGap) {
  Server server;
  server.members("Systems/1", "Memory", {{"A", "{}"}});
  server.put(
      "Systems/1/Memory",
      R"({"Members": [)" + linkTo("Systems/1/Memory/A") + ", " + kAway + "]}");
  const std::string cause = "a link in Members does not stay below /redfish/";
  EXPECT_EQ(gapIn(server), cause);
  const auto table = mapDimms(server.graph(), server.node());
  EXPECT_EQ(table.records.size(), 1U);
  EXPECT_FALSE(table.failure.has_value());
  ASSERT_TRUE(table.gap.has_value());
  EXPECT_EQ(table.gap->cause, cause);
}

TEST(RefusedLink, OfTheOnlyMemberThatIsThereIsAFailure) {
  Server server;
  server.put("Systems/1/Storage/S", object("Drives", "[" + kAway + "]"));
  server.members("Systems/1", "Storage",
                 {{"S", object("Drives", "[" + kAway + "]")}});
  EXPECT_EQ(failureIn(server),
            "a link in Drives does not stay below /redfish/");
}

TEST(RefusedLink, OfADeviceIsAGapBesideOthers) {
  Server server(object("PCIeDevices", "[" + kAway + "]"));
  EXPECT_NE(failureIn(server), "");
  server.members("Chassis/1", "PCIeDevices", {{"1", R"({"Name": "One"})"}});
  EXPECT_EQ(gapIn(server),
            "a link in PCIeDevices does not stay below /redfish/");
  const auto table = mapPciAdapters(server.graph(), server.node());
  EXPECT_EQ(table.records.size(), 1U);
  EXPECT_TRUE(table.gap.has_value());
}

TEST(RefusedLink, OfAChassisIsAGapBesideOthers) {
  Server server(object("Links", object("Chassis", "[" + kAway + "]")));
  EXPECT_EQ(gapIn(server),
            "a link in Links/Chassis does not stay below /redfish/");
  server.linked("Chassis/1", "Thermal", R"({"Fans": [{"Name": "Fan A"}]})");
  const auto table = mapFans(server.graph(), server.node());
  EXPECT_EQ(table.records.size(), 1U);
  EXPECT_TRUE(table.gap.has_value());
}

TEST(RefusedLink, OfTheOnlyChassisIsAFailure) {
  Server server(object("Links", object("Chassis", "[" + kAway + "]")));
  server.put("Chassis", R"({"Members": []})");
  EXPECT_EQ(failureIn(server),
            "a link in Links/Chassis does not stay below /redfish/");
}

TEST(RefusedLink, OfPartsElsewhereIsAGap) {
  for (const std::string links : {"Fans", "CooledBy", "PowerSupplies"}) {
    const Server server("{}",
                        object("Links", object(links, "[" + kAway + "]")));
    EXPECT_EQ(gapIn(server),
              "a link in Links/" + links + " does not stay below /redfish/");
  }
}

TEST(RefusedLink, OfAManagerIsAGap) {
  EXPECT_EQ(
      gapIn(Server(object("Links", object("ManagedBy", "[" + kAway + "]")))),
      "a link in Links/ManagedBy does not stay below /redfish/");
}

TEST(RefusedLink, EmptyTextIsNone) {
  const std::string empty = R"({"@odata.id": ""})";
  Server server(object("Memory", empty));
  server.members("Systems/1", "Storage",
                 {{"S", object("Drives", "[" + empty + "]")}});
  EXPECT_EQ(gapIn(server), "");
}

}  // namespace
}  // namespace devhealth
