// Alerts out of health: of components, subsystems and holders, and the walk
// that finds them.
#include <gtest/gtest.h>

#include "suite/devhealth/health/alerts.h"
#include "tests/suite/devhealth/alert_reading.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

const std::string kChangedToWarning =
    " 1 ResourceEvent.1.0.ResourceStatusChangedWarning | ";
const std::string kChangedToCritical =
    " 2 ResourceEvent.1.0.ResourceStatusChangedCritical | ";

// The alerts of a server with one memory module.
Lines ofModule(const std::string& module) {
  Server server;
  server.members("Systems/1", "Memory", {{"D1", module}});
  return alertsOf(server);
}

TEST(ComponentHealth, WarningAndCriticalAreAlerts) {
  EXPECT_EQ(ofModule(withHealth("Warning", R"("Name": "Module 1")")),
            (Lines{"Memory" + kChangedToWarning +
                   "Module 1: health is Warning, state Enabled."}));
  EXPECT_EQ(ofModule(withHealth("Critical", R"("Name": "Module 1")")),
            (Lines{"Memory" + kChangedToCritical +
                   "Module 1: health is Critical, state Enabled."}));
}

TEST(ComponentHealth, GoodAndUnknownHealthAreNone) {
  for (const std::string status :
       {R"({"Health": "OK"})", R"({"Health": null})", R"({})",
        R"({"Health": "Fine"})", R"({"State": "Absent", "Health": "OK"})",
        R"({"State": "Absent", "Health": null})",
        R"({"State": "UnavailableOffline"})"}) {
    EXPECT_EQ(ofModule(R"({"Status": )" + status + "}"), Lines{}) << status;
  }
}

TEST(ComponentHealth, RemovedPartWithTroubleIsAnAlert) {
  EXPECT_EQ(ofModule(R"({"Name": "M", "Status": {"State": "Absent",
                                                 "Health": "Critical"}})"),
            (Lines{"Memory" + kChangedToCritical +
                   "DIMM M: health is Critical, state Absent."}));
}

TEST(ComponentHealth, DegradedStateWithoutHealthIsAWarning) {
  EXPECT_EQ(ofModule(R"({"Name": "M", "Status": {"State": "Degraded",
                                                 "Health": null}})"),
            (Lines{"Memory" + kChangedToWarning +
                   "M: health is Unknown, state Degraded."}));
  EXPECT_EQ(ofModule(R"({"Status": {"State": "Degraded", "Health": "OK"}})"),
            Lines{});
}

TEST(ComponentHealth, RollupStandsInForNoHealth) {
  EXPECT_EQ(ofModule(R"({"Status": {"HealthRollup": "Warning"}})").size(), 1U);
  EXPECT_EQ(ofModule(R"({"Status": {"Health": "OK",
                                    "HealthRollup": "Critical"}})"),
            Lines{});
}

TEST(ComponentHealth, MissingStateIsLeftOutOfTheText) {
  EXPECT_EQ(ofModule(R"({"Name": "M", "Status": {"Health": "Warning"}})"),
            (Lines{"Memory" + kChangedToWarning + "M: health is Warning."}));
}

TEST(ComponentHealth, PredictedFailureIsAWarning) {
  Server server;
  server.members(
      "Systems/1", "Storage",
      {{"S", R"({"Drives": [)" + linkTo("Chassis/1/Drives/1") + "]}"}});
  server.put("Chassis/1/Drives/1",
             R"({"Name": "Disk 1", "FailurePredicted": true,
                 "Status": {"State": "Enabled", "Health": "OK"}})");
  EXPECT_EQ(alertsOf(server),
            (Lines{"Disks" + kChangedToWarning +
                   "Disk 1: a failure is predicted, health is OK, state "
                   "Enabled."}));
  server.put("Chassis/1/Drives/1",
             R"({"FailurePredicted": false,
                 "Status": {"State": "Enabled", "Health": "OK"}})");
  EXPECT_EQ(alertsOf(server), Lines{});
}

TEST(ComponentHealth, ConditionOfTheSameSeverityIsEnough) {
  EXPECT_EQ(ofModule(R"({"Status": {"Health": "Warning", "Conditions": [
          {"MessageId": "V.1.0.A", "Message": "A.", "Severity": "Warning"}]}})"),
            (Lines{"Memory 1 V.1.0.A | A."}));
}

TEST(ComponentHealth, ConditionOfALowerSeverityIsNot) {
  EXPECT_EQ(
      ofModule(R"({"Status": {"Health": "Critical", "Conditions": [
          {"MessageId": "V.1.0.A", "Message": "A.", "Severity": "Warning"}]}})"),
      (Lines{"Memory 1 V.1.0.A | A.",
             "Memory" + kChangedToCritical + "DIMM D1: health is Critical."}));
}

TEST(ComponentHealth, ListedConditionOfThePartIsEnough) {
  Server server;
  server.members("Systems/1", "Memory", {{"D1", withHealth("Warning")}});
  server.linked("", "ServiceConditions",
                R"({"HealthRollup": "Warning", "Conditions": [
                    {"MessageId": "V.1.0.A", "Message": "A.",
                     "Severity": "Warning", "OriginOfCondition": )" +
                    linkTo("Systems/1/Memory/D1") + "}]}");
  EXPECT_EQ(alertsOf(server), (Lines{"Memory 1 V.1.0.A | A."}));
}

TEST(ComponentHealth, ConditionThatAPartHoldsForAnotherIsEnough) {
  EXPECT_EQ(ofModule(R"({"Status": {"Health": "Warning", "Conditions": [
          {"MessageId": "V.1.0.A", "Message": "A.", "Severity": "Warning",
           "OriginOfCondition": {"@odata.id": "/redfish/v1/Elsewhere/7"}}]}})"),
            (Lines{"Other 1 V.1.0.A | A."}));
}

TEST(ComponentHealth, RedundancyGroupsAreComponents) {
  Server server;
  server.linked("Chassis/1", "PowerSubsystem",
                R"({"PowerSupplyRedundancy": [
                    {"Name": "Supplies", "Status": {"Health": "Warning"}}]})");
  EXPECT_EQ(alertsOf(server),
            (Lines{"Power" + kChangedToWarning +
                   "Redundancy Supplies: health is Warning."}));
}

TEST(ComponentHealth, NamesAreThoseOfTheTables) {
  Server server;
  server.members("Systems/1", "Processors",
                 {{"A", R"({"@odata.type": "#Processor.v1_20_0.Processor",
                            "Name": "CPU", "Socket": "S1",
                            "Status": {"Health": "Warning"}})"}});
  server.linked("Chassis/1", "Thermal",
                R"({"Fans": [{"FanName": "Front",
                              "Status": {"Health": "Warning"}},
                             {"Name": "Rear"}]})");
  EXPECT_EQ(
      alertsOf(server),
      (Lines{"Processors" + kChangedToWarning + "S1: health is Warning.",
             "Cooling" + kChangedToWarning + "Front: health is Warning."}));
}

TEST(ComponentHealth, PartThatCameInsideAnotherIsToldOnce) {
  Server server;
  server.members("Systems/1", "Storage",
                 {{"S", R"({"Inline": [{"@odata.id": "/redfish/v1/X/1",
                            "Status": {"Health": "Warning"}}]})"}});
  EXPECT_EQ(alertsOf(server).size(), 1U);
  server.put("X/1", withHealth("Warning"));
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

// Subsystems.

Server withFans(const std::string& subsystem, const std::string& fan) {
  Server server;
  server.linked("Chassis/1", "ThermalSubsystem",
                R"({"@odata.type": "#ThermalSubsystem.v1_3_0.ThermalSubsystem",
                    "Name": "Thermal", "Status": )" +
                    subsystem + "}");
  server.members("Chassis/1/ThermalSubsystem", "Fans", {{"1", fan}});
  return server;
}

TEST(SubsystemHealth, FanExplainsItsSubsystem) {
  EXPECT_EQ(alertsOf(withFans(R"({"Health": "Warning"})",
                              withHealth("Warning", R"("Name": "F")"))),
            (Lines{"Cooling" + kChangedToWarning +
                   "F: health is Warning, state Enabled."}));
}

TEST(SubsystemHealth, UnexplainedRollupIsAnAlertOfTheSubsystem) {
  EXPECT_EQ(alertsOf(withFans(R"({"HealthRollup": "Critical"})",
                              withHealth("Warning", R"("Name": "F")"))),
            (Lines{"Cooling" + kChangedToCritical +
                       "ThermalSubsystem Thermal: health is "
                       "Critical.",
                   "Cooling" + kChangedToWarning +
                       "F: health is Warning, state Enabled."}));
}

TEST(SubsystemHealth, DriveElsewhereExplainsItsStorage) {
  Server server;
  server.members("Systems/1", "Storage",
                 {{"S", R"({"@odata.type": "#Storage.v1_15_0.Storage",
                            "Status": {"HealthRollup": "Critical"},
                            "Drives": [)" +
                            linkTo("Chassis/1/Drives/1") + "]}"}});
  server.put("Chassis/1/Drives/1", withHealth("Critical", R"("Name": "D")"));
  EXPECT_EQ(alertsOf(server),
            (Lines{"Disks" + kChangedToCritical +
                   "Drive D: health is Critical, state Enabled."}));
}

TEST(SubsystemHealth, SummaryIsExplainedByItsParts) {
  Server server(
      R"({"MemorySummary": {"Status": {"HealthRollup": "Warning"}}})");
  server.members("Systems/1", "Memory",
                 {{"D1", withHealth("Warning", R"("Name": "M")")}});
  EXPECT_EQ(alertsOf(server), (Lines{"Memory" + kChangedToWarning +
                                     "M: health is Warning, state Enabled."}));
}

TEST(SubsystemHealth, UnexplainedSummaryIsAnAlertOfItsArea) {
  Server server(
      R"({"ProcessorSummary": {"Status": {"HealthRollup": "Warning"}}})");
  server.members("Systems/1", "Processors", {{"A", withHealth("OK")}});
  EXPECT_EQ(alertsOf(server), (Lines{"Processors" + kChangedToWarning +
                                     "Processors: health is Warning."}));
}

TEST(SubsystemHealth, LinkToASummaryThatIsNowhereIsHarmless) {
  Server server;
  server.linked("Chassis/1", "Thermal", R"({"X": {
      "@odata.id": "/redfish/v1/Nowhere#/MemorySummary",
      "Status": {"Health": "Warning"}}})");
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

// Holders.

TEST(HolderHealth, UnexplainedSystemIsAnAlert) {
  const Server server(
      R"({"Name": "Host", "Status": {"State": "Enabled", "Health": "OK",
                                     "HealthRollup": "Critical"}})");
  EXPECT_EQ(alertsOf(server), (Lines{"System" + kChangedToCritical +
                                     "System Host: health is Critical, state "
                                     "Enabled."}));
}

TEST(HolderHealth, UnexplainedChassisAndManagerAreAlerts) {
  Server server("{}", withHealth("Warning", R"("Name": "Box")"));
  server.put("Managers/1", withHealth("Critical", R"("Name": "BMC")"));
  EXPECT_EQ(alertsOf(server),
            (Lines{"System" + kChangedToWarning +
                       "Chassis Box: health is Warning, state Enabled.",
                   "System" + kChangedToCritical +
                       "Manager BMC: health is Critical, state Enabled."}));
}

TEST(HolderHealth, PartOfTheSystemExplainsIt) {
  Server server(withHealth("Warning"));
  server.members("Systems/1", "Memory",
                 {{"D1", withHealth("Warning", R"("Name": "M")")}});
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

TEST(HolderHealth, LesserTroubleExplainsNothing) {
  Server server(withHealth("Critical"));
  server.members("Systems/1", "Memory", {{"D1", withHealth("Warning")}});
  EXPECT_EQ(alertsOf(server).size(), 2U);
}

TEST(HolderHealth, PartOfTheChassisExplainsTheSystem) {
  Server server(withHealth("Warning"));
  server.linked("Chassis/1", "Thermal",
                R"({"Fans": [)" + withHealth("Warning") + "]}");
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

TEST(HolderHealth, PartOfTheSystemExplainsTheChassisThatHoldsIt) {
  Server server("{}",
                withHealth("Warning", R"("Links": {"ComputerSystems": [)" +
                                          linkTo("Systems/1") + "]}"));
  server.members("Systems/1", "Memory", {{"D1", withHealth("Warning")}});
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

TEST(HolderHealth, DriveInAnotherChassisExplainsTheSystem) {
  Server server(withHealth("Warning"));
  server.members(
      "Systems/1", "Storage",
      {{"S", R"({"Drives": [)" + linkTo("Chassis/Shelf/Drives/1") + "]}"}});
  server.put("Chassis/Shelf/Drives/1", withHealth("Warning"));
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

TEST(HolderHealth, CardExplainsTheChassisAroundIt) {
  Server server("{}", withHealth("Warning"));
  server.put("Systems/1",
             R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  server.put("Chassis", R"({"Members": [)" + linkTo("Chassis/1") + "," +
                            linkTo("Chassis/Card") + "]}");
  server.put("Chassis/Card",
             R"({"Links": {"ContainedBy": )" + linkTo("Chassis/1") + "}}");
  server.members("Chassis/Card", "PCIeDevices",
                 {{"1", withHealth("Warning", R"("Name": "Card")")}});
  EXPECT_EQ(alertsOf(server), (Lines{"PCI" + kChangedToWarning +
                                     "Card: health is Warning, state "
                                     "Enabled."}));
}

TEST(HolderHealth, LinkedDeviceExplainsTheChassis) {
  Server server("{}", withHealth("Warning",
                                 R"("Links": {"PCIeDevices": [)" +
                                     linkTo("Systems/1/PCIeDevices/1") + "]}"));
  server.put("Systems/1/PCIeDevices/1",
             withHealth("Warning", R"("Name": "Card")"));
  EXPECT_EQ(alertsOf(server), (Lines{"PCI" + kChangedToWarning +
                                     "Card: health is Warning, state "
                                     "Enabled."}));
}

TEST(HolderHealth, ConditionOfTheHolderExplainsIt) {
  EXPECT_EQ(alertsOf(Server(R"({"Status": {"Health": "Warning", "Conditions": [
                {"MessageId": "V.1.0.A", "Message": "A.",
                 "Severity": "Warning"}]}})")),
            (Lines{"System 1 V.1.0.A | A."}));
}

TEST(HolderHealth, HealthOfASystemInsideACardIsItsOwn) {
  Server server;
  server.put("Systems/Dpu",
             R"({"@odata.type": "#ComputerSystem.v1_20_0.ComputerSystem",
                 "SystemType": "DPU", "Status": {"Health": "Critical"}})");
  EXPECT_EQ(alertsOf(server), Lines{});
}

TEST(HolderHealth, TrustedListLeavesHoldersAlone) {
  Server server(withHealth("Warning"));
  server.linked("", "ServiceConditions",
                R"({"HealthRollup": "Warning", "Conditions": [
                    {"MessageId": "V.1.0.A", "Message": "A.",
                     "Severity": "Warning"}]})");
  const HealthReading reading = readingOf(server);
  EXPECT_TRUE(reading.serviceConditionsSuffice);
  EXPECT_EQ(alertLines(reading), (Lines{"Other 1 V.1.0.A | A."}));
}

// Branches that were not entered.

TEST(UnexplainedHolder, NamesTheSystemWhoseBranchesWereSkipped) {
  Server server(withHealth("Warning"));
  server.link("Systems/1", "Memory");
  const HealthReading reading = readingOf(server);
  EXPECT_EQ(unexplainedOf(reading), (Lines{"Systems/1"}));
  EXPECT_EQ(reading.events.size(), 1U);
}

TEST(UnexplainedHolder, MemberThatWasNotReadIsABranchNotEntered) {
  Server server(withHealth("Warning"));
  server.linked("Systems/1", "Processors",
                R"({"Members": [)" + linkTo("Systems/1/Processors/A") + "]}");
  EXPECT_EQ(unexplainedOf(readingOf(server)), (Lines{"Systems/1"}));
  server.put("Systems/1/Processors/A", "{}");
  EXPECT_EQ(unexplainedOf(readingOf(server)), Lines{});
}

TEST(UnexplainedHolder, NamesStorageAndSubsystems) {
  Server server(withHealth("Warning"));
  server.members(
      "Systems/1", "Storage",
      {{"A", R"({"Drives": [)" + linkTo("Chassis/1/Drives/1") + "]}"},
       {"B", "{}"},
       {"C", "{}"},
       {"D", "{}"}});
  server.link("Systems/1/Storage/B", "Controllers");
  server.link("Systems/1/Storage/C", "Volumes");
  server.linked("Chassis/1", "ThermalSubsystem", "{}");
  server.link("Chassis/1/ThermalSubsystem", "Fans");
  server.linked("Chassis/1", "PowerSubsystem", "{}");
  server.link("Chassis/1/PowerSubsystem", "Batteries");
  EXPECT_EQ(unexplainedOf(readingOf(server)),
            (Lines{"Chassis/1/PowerSubsystem", "Chassis/1/ThermalSubsystem",
                   "Systems/1/Storage/A", "Systems/1/Storage/B",
                   "Systems/1/Storage/C"}));
}

TEST(UnexplainedHolder, NothingIsSkippedWhereAllWasEntered) {
  Server server(withHealth("Warning"));
  server.members("Systems/1", "Memory",
                 {{"D1", std::string(kBroken)}, {"D2", "{}"}});
  EXPECT_EQ(unexplainedOf(readingOf(server)), Lines{});
}

TEST(UnexplainedHolder, ExplainedOneAsksForNothing) {
  Server server(withHealth("Warning"));
  server.link("Systems/1", "Processors");
  server.members("Systems/1", "Memory", {{"D1", withHealth("Warning")}});
  EXPECT_EQ(unexplainedOf(readingOf(server)), Lines{});
}

TEST(UnexplainedHolder, ChassisAsksForItsOwnAndItsSystemsBranches) {
  Server server("{}", withHealth("Warning"));
  server.put("Systems/1",
             R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  server.link("Systems/1", "Memory");
  server.linked("Chassis/1", "ThermalSubsystem", "{}");
  server.link("Chassis/1/ThermalSubsystem", "Fans");
  EXPECT_EQ(unexplainedOf(readingOf(server)),
            (Lines{"Chassis/1/ThermalSubsystem", "Systems/1"}));
}

// What cannot be read.

TEST(WalkFailure, UnreadableListsAreFailures) {
  for (const std::string collection : {"Processors", "Memory", "Storage"}) {
    Server server;
    server.linked("Systems/1", collection, kBroken);
    EXPECT_TRUE(readingOf(server).failure.has_value()) << collection;
  }
  for (const std::string part :
       {"ThermalSubsystem", "Thermal", "PowerSubsystem", "Power", "PCIeDevices",
        "NetworkAdapters"}) {
    Server server;
    server.linked("Chassis/1", part, kBroken);
    EXPECT_TRUE(readingOf(server).failure.has_value()) << part;
  }
}

TEST(WalkFailure, ListsInsideSubsystemsCount) {
  for (const auto& [subsystem, collection] :
       {std::pair<std::string, std::string>{"ThermalSubsystem", "Fans"},
        {"PowerSubsystem", "PowerSupplies"},
        {"PowerSubsystem", "Batteries"}}) {
    Server server;
    server.linked("Chassis/1", subsystem, "{}");
    server.linked("Chassis/1/" + subsystem, collection, kBroken);
    EXPECT_TRUE(readingOf(server).failure.has_value()) << collection;
  }
  for (const std::string collection : {"Controllers", "Volumes"}) {
    Server server;
    server.members("Systems/1", "Storage", {{"S", "{}"}});
    server.linked("Systems/1/Storage/S", collection, kBroken);
    EXPECT_TRUE(readingOf(server).failure.has_value()) << collection;
  }
}

TEST(WalkFailure, AllMembersUnreadableIsOne) {
  Server server;
  server.members("Systems/1", "Memory",
                 {{"A", std::string(kBroken)}, {"B", std::string(kBroken)}});
  ASSERT_TRUE(readingOf(server).failure.has_value());
  EXPECT_EQ(readingOf(server).failure->kind, base::FailureKind::kBadContent);
}

TEST(WalkFailure, SingleUnreadableMemberIsNone) {
  Server server;
  server.members("Systems/1", "Memory",
                 {{"A", std::string(kBroken)}, {"B", "{}"}});
  EXPECT_FALSE(readingOf(server).failure.has_value());
  EXPECT_TRUE(readingOf(server).gap.has_value());
}

TEST(WalkFailure, WithoutUnreadablePartsThereIsNoGap) {
  Server server;
  server.members("Systems/1", "Memory", {{"A", "{}"}});
  server.linked("Chassis/1", "Thermal", kMissing);
  EXPECT_FALSE(readingOf(server).gap.has_value());
}

TEST(WalkFailure, MissingListsAreNone) {
  Server server;
  server.linked("Systems/1", "Memory", kMissing);
  server.linked("Chassis/1", "Thermal", kMissing);
  EXPECT_FALSE(readingOf(server).failure.has_value());
}

TEST(WalkFailure, BranchThatWasNotEnteredIsNone) {
  Server server;
  server.link("Systems/1", "Memory");
  EXPECT_FALSE(readingOf(server).failure.has_value());
}

TEST(WalkFailure, OlderDocumentMakesUpForTheSubsystem) {
  Server server;
  server.linked("Chassis/1", "ThermalSubsystem", kBroken);
  server.linked("Chassis/1", "Thermal", "{}");
  EXPECT_FALSE(readingOf(server).failure.has_value());
}

TEST(WalkFailure, TrustedListNeedsNoWalk) {
  Server server;
  server.linked("Systems/1", "Memory", kBroken);
  server.linked("", "ServiceConditions",
                R"({"HealthRollup": "OK", "Conditions": []})");
  EXPECT_FALSE(readingOf(server).failure.has_value());
}

TEST(WalkFailure, UnreadableChassisOfTheSystemIsOne) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  server.put("Chassis/1", kBroken);
  EXPECT_TRUE(readingOf(server).failure.has_value());
}

}  // namespace
}  // namespace devhealth
