// Alerts that a person in front of the rack can act on: what parts are called,
// what makes no alarm, and what stands once.
#include <gtest/gtest.h>

#include "suite/devhealth/health/alerts.h"
#include "tests/suite/devhealth/alert_reading.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

// The sentences of the alerts of a server.
Lines messagesOf(const Server& server) {
  Lines messages;
  for (const std::string& line : alertsOf(server)) {
    messages.push_back(line.substr(line.find("| ") + 2));
  }
  return messages;
}

std::string warning(const std::string& more) {
  return R"({"Status": {"Health": "Warning"}, )" + more + "}";
}

const std::string kTwoChassis = R"({"Links": {"Chassis": [)" +
                                linkTo("Chassis/1") + "," +
                                linkTo("Chassis/2") + "]}}";

// Names.

TEST(PartNames, DriveIsToldByItsClass) {
  Server server;
  server.members("Systems/1", "Storage",
                 {{"S", R"({"Drives": [)" + linkTo("Chassis/1/Drives/3") + "," +
                            linkTo("Chassis/1/Drives/4") + "," +
                            linkTo("Chassis/1/Drives/5") + "]}"}});
  server.put("Chassis/1/Drives/3", warning(R"("Name": "3", "Id": "3")"));
  server.put("Chassis/1/Drives/4",
             warning(R"("Name": "Physical Disk 0:1:2", "Id": "4")"));
  server.put("Chassis/1/Drives/5", warning(R"("Name": "SSD 5", "Id": "5")"));
  EXPECT_EQ(messagesOf(server),
            (Lines{"Drive 3: health is Warning.",
                   "Physical Disk 0:1:2: health is Warning.",
                   "SSD 5: health is Warning."}));
}

TEST(PartNames, EntriesOfArraysAreToldByTheirClass) {
  Server server;
  server.linked("Chassis/1", "Thermal",
                R"({"Temperatures": [)" + warning(R"("Name": "Inlet")") + "]}");
  server.linked("Chassis/1", "Power",
                R"({"Voltages": [)" + warning(R"("Name": "12V")") + "]}");
  EXPECT_EQ(messagesOf(server), (Lines{"Temperature Inlet: health is "
                                       "Warning.",
                                       "Voltage 12V: health is Warning."}));
}

TEST(PartNames, DisksOfSimpleStorageAreDrives) {
  Server server;
  server.members(
      "Systems/1", "SimpleStorage",
      {{"1", R"({"Devices": [)" + warning(R"("Name": "Bay 4")") + "]}"}});
  EXPECT_EQ(alertsOf(server),
            (Lines{"Disks 1 ResourceEvent.1.0.ResourceStatusChangedWarning | "
                   "Drive Bay 4: health is Warning."}));
}

TEST(PartNames, CardIsCalledByItsRow) {
  Server server;
  server.members("Chassis/1", "PCIeDevices",
                 {{"1", R"({"Name": "Orlen N10", "SerialNumber": "S"})"}});
  server.members(
      "Systems/1", "Storage",
      {{"S", R"({"StorageControllers": [)" +
                 warning(R"("Name": "Raid", "SerialNumber": "S")") + "]}"}});
  EXPECT_EQ(messagesOf(server), (Lines{"Orlen N10: health is Warning."}));
}

TEST(PartNames, ModuleIsCalledByItsPlace) {
  Server server;
  server.members(
      "Systems/1", "Memory",
      {{"1", warning(R"("Name": "Memory", "DeviceLocator": "A1")")}});
  EXPECT_EQ(messagesOf(server), (Lines{"A1: health is Warning."}));
}

TEST(PartNames, SystemWithoutANameIsToldByItsId) {
  EXPECT_EQ(messagesOf(Server(warning(R"("Name": "System", "Id": "7")"))),
            (Lines{"System 7: health is Warning."}));
}

TEST(PartNames, MakersListIsOfTheCategoryPci) {
  Server server("{}", R"({"Oem": {"Kestwyn": {"Links": {"Devices":
      {"@odata.id": "/redfish/v1/Chassis/1/Devices"}}}}})");
  server.put("Chassis/1/Devices",
             R"({"Members": [)" + linkTo("Chassis/1/Devices/7") + "]}");
  server.put("Chassis/1/Devices/7",
             warning(R"("@odata.type": "#KestwynDevice.v1_0_0.KestwynDevice",
                        "Name": "Raid", "Location": "Slot 2")"));
  EXPECT_EQ(alertsOf(server),
            (Lines{"PCI 1 ResourceEvent.1.0.ResourceStatusChangedWarning | "
                   "Raid: health is Warning."}));
}

// What makes no alarm of its own.

constexpr const char* kMeter =
    R"({"PowerControl": [{"Name": "Meter",
                          "Status": {"Health": "Critical"}}]})";

TEST(QuietParts, PowerControlMakesNoAlert) {
  Server server;
  server.linked("Chassis/1", "Power", kMeter);
  EXPECT_EQ(alertsOf(server), Lines{});
}

TEST(QuietParts, PowerControlMakesNoAlertOfItsSubsystem) {
  Server server;
  server.linked("Chassis/1", "Power",
                R"({"@odata.type": "#Power.v1_7_0.Power",
                    "Status": {"HealthRollup": "Critical"},
                    "PowerControl": [{"Status": {"Health": "Critical"}}]})");
  EXPECT_EQ(alertsOf(server), Lines{});
}

TEST(QuietParts, PowerControlSpeaksInPlaceOfAnUnexplainedHolder) {
  Server server(withHealth("Critical"));
  server.linked("Chassis/1", "Power", kMeter);
  EXPECT_EQ(alertsOf(server),
            (Lines{"Power 2 ResourceEvent.1.0.ResourceStatusChangedCritical | "
                   "Power Control Meter: health is Critical."}));
}

TEST(QuietParts, PowerControlIsNotNeededWhereThereIsACause) {
  Server server(withHealth("Critical"));
  server.linked("Chassis/1", "Power", kMeter);
  server.members("Systems/1", "Memory",
                 {{"D1", withHealth("Critical", R"("Name": "M")")}});
  EXPECT_EQ(messagesOf(server),
            (Lines{"M: health is Critical, state Enabled."}));
}

TEST(QuietParts, LesserQuietPartExplainsNoHolder) {
  Server server(withHealth("Critical", R"("Name": "Host")"));
  server.linked("Chassis/1", "Power",
                R"({"PowerControl": [)" + withHealth("Warning") + "]}");
  EXPECT_EQ(messagesOf(server),
            (Lines{"System Host: health is Critical, state Enabled."}));
}

constexpr const char* kBay =
    R"({"MemberId": "4", "Status": {"Health": "Warning", "State": "Absent"}})";

TEST(QuietParts, EmptyBayMakesNoAlert) {
  Server server;
  server.linked("Chassis/1", "Power",
                R"({"PowerSupplies": [)" + std::string(kBay) + "]}");
  EXPECT_EQ(alertsOf(server), Lines{});
}

TEST(QuietParts, EmptyBaySpeaksBesideALostRedundancy) {
  Server server;
  server.linked("Chassis/1", "Power",
                R"({"PowerSupplies": [)" + std::string(kBay) +
                    R"(], "Redundancy": [{"Name": "Group", "Status":
                          {"Health": "Critical"}}]})");
  EXPECT_EQ(messagesOf(server),
            (Lines{"Power Supply 4: health is Warning, state Absent.",
                   "Redundancy Group: health is Critical."}));
}

TEST(QuietParts, EmptyBayOfASubsystemSpeaksBesideALostRedundancy) {
  Server server;
  server.linked("Chassis/1", "PowerSubsystem",
                R"({"PowerSupplyRedundancy": [{"Status":
                    {"Health": "Warning"}}]})");
  server.members("Chassis/1/PowerSubsystem", "PowerSupplies",
                 {{"4", R"({"Id": "4", "Status": {"Health": "Warning",
                                                  "State": "Absent"}})"}});
  EXPECT_EQ(messagesOf(server).size(), 2U);
}

TEST(QuietParts, RemovedPartWithAnIdentityIsAnAlert) {
  for (const std::string identity :
       {R"("Name": "Left")", R"("Model": "P1")", R"("SerialNumber": "S")",
        R"("PartNumber": "P")"}) {
    Server server;
    server.linked("Chassis/1", "Power",
                  R"({"PowerSupplies": [{"Status": {"Health": "Warning",
                      "State": "Absent"}, )" +
                      identity + "}]}");
    EXPECT_EQ(alertsOf(server).size(), 1U) << identity;
  }
}

TEST(QuietParts, FailureIsNotPredictedForAnAbsentPart) {
  Server server;
  server.members(
      "Systems/1", "Storage",
      {{"S", R"({"Drives": [)" + linkTo("Chassis/1/Drives/1") + "]}"}});
  server.put("Chassis/1/Drives/1",
             R"({"Name": "Disk 1", "FailurePredicted": true,
                 "Status": {"State": "Absent", "Health": "OK"}})");
  EXPECT_EQ(alertsOf(server), Lines{});
}

TEST(QuietParts, ResourceInsideAnotherMakesNoAlert) {
  Server server;
  server.linked("Chassis/1", "PowerSubsystem", "{}");
  server.members("Chassis/1/PowerSubsystem", "PowerSupplies",
                 {{"1", R"({"Name": "P1", "Metrics": {
                     "@odata.id": "/redfish/v1/Chassis/1/M",
                     "@odata.type": "#PowerSupplyMetrics.v1_1_0.P", "Id": "M",
                     "Name": "M", "Status": {"Health": "Critical"}}})"}});
  EXPECT_EQ(alertsOf(server), Lines{});
}

// What stands once.

TEST(RepeatedParts, PartUnderTwoChassisIsOneAlertOfTheWorst) {
  Server server(kTwoChassis);
  server.put("Chassis/1", R"({"Id": "Box"})");
  server.put("Chassis/2", R"({"Id": "Box"})");
  const auto thermal = [](const std::string& health) {
    return R"({"@odata.type": "#Thermal.v1_6_0.Thermal",
               "Status": {"HealthRollup": ")" +
           health + R"("}, "Temperatures": [{"Name": "Inlet",
               "MemberId": "0", "Status": {"Health": ")" +
           health + R"("}}]})";
  };
  server.linked("Chassis/1", "Thermal", thermal("Warning"));
  server.linked("Chassis/2", "Thermal", thermal("Critical"));
  EXPECT_EQ(messagesOf(server),
            (Lines{"Temperature Inlet: health is Critical."}));
}

TEST(RepeatedParts, TwoDocumentsOfOneChassisSpeakOnce) {
  Server server(kTwoChassis);
  server.put("Chassis/1", warning(R"("Id": "Box", "Name": "Box")"));
  server.put("Chassis/2", warning(R"("Id": "Box", "Name": "Box")"));
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

// What explains the health of the machine.

TEST(MachineHealth, DeviceThatAChassisLinksExplainsIt) {
  Server server("{}", warning(R"("Links": {"PCIeDevices": [)" +
                              linkTo("Systems/1/PCIeDevices/1") + "]}"));
  server.put("Systems/1/PCIeDevices/1", warning(R"("Name": "Card")"));
  EXPECT_EQ(messagesOf(server), (Lines{"Card: health is Warning."}));
}

TEST(MachineHealth, DriveThatNamesNoChassisExplainsEveryChassis) {
  Server server(kTwoChassis);
  server.put("Chassis/1", warning(R"("Id": "A")"));
  server.put("Chassis/2", warning(R"("Id": "B")"));
  server.members("Systems/1", "Storage",
                 {{"S", R"({"Drives": [)" +
                            linkTo("Systems/1/Storage/S/Drives/1") + "]}"}});
  server.put("Systems/1/Storage/S/Drives/1", warning(R"("Name": "Disk 1")"));
  EXPECT_EQ(messagesOf(server), (Lines{"Disk 1: health is Warning."}));
}

TEST(MachineHealth, ManagerIsExplainedByWhatIsBelowItAlone) {
  Server server;
  server.put("Managers/1", warning(R"("Name": "BMC")"));
  server.members("Systems/1", "Memory", {{"D1", warning(R"("Name": "M")")}});
  EXPECT_EQ(messagesOf(server).size(), 2U);
}

TEST(MachineHealth, SummaryWithoutACollectionIsAnAlert) {
  Server server(
      R"({"MemorySummary": {"Status": {"HealthRollup": "Warning"}}})");
  server.linked("Systems/1", "Memory", kMissing);
  EXPECT_EQ(alertsOf(server),
            (Lines{"Memory 1 ResourceEvent.1.0.ResourceStatusChangedWarning | "
                   "Memory: health is Warning."}));
}

TEST(MachineHealth, OlderSpellingOfTheRollupCounts) {
  EXPECT_EQ(messagesOf(Server(
                R"({"Name": "Host", "Status": {"HealthRollUp": "Warning"}})")),
            (Lines{"System Host: health is Warning."}));
  Server server;
  server.members("Systems/1", "Memory", {{"D1", R"({"Name": "M", "Status":
                             {"HealthRollUp": "Critical"}})"}});
  EXPECT_EQ(messagesOf(server), (Lines{"M: health is Critical."}));
}

TEST(MachineHealth, PlaceholderIsAnOrdinaryMessage) {
  Server server;
  server.members("Systems/1", "Memory",
                 {{"D1", R"({"Status": {"Conditions": [{"MessageId": "V.1.0.A",
                  "Message": "None", "Severity": "Warning"}]}})"}});
  EXPECT_EQ(messagesOf(server), (Lines{"None"}));
}

}  // namespace
}  // namespace devhealth
