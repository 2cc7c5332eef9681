// Alerts out of conditions: the service's list, and those of resources.
#include "suite/devhealth/health/alerts.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/alert_reading.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

std::string condition(const std::string& id, const std::string& severity,
                      const std::string& origin = "",
                      const std::string& more = "") {
  return R"({"MessageId": ")" + id + R"(", "Message": "About )" + id +
         R"(.", "Severity": ")" + severity + "\"" +
         (origin.empty() ? "" : R"(, "OriginOfCondition": )" + linkTo(origin)) +
         (more.empty() ? "" : ", " + more) + "}";
}

std::string holding(const std::string& conditions) {
  return R"({"Status": {"Conditions": [)" + conditions + "]}}";
}

constexpr const char* kChanged =
    "ResourceEvent.1.0.ResourceStatusChangedWarning";

// A server whose list of conditions is as given.
Server listing(const std::string& rollup, const std::string& conditions) {
  Server server;
  server.linked("", "ServiceConditions",
                R"({"HealthRollup": ")" + rollup + R"(", "Conditions": [)" +
                    conditions + "]}");
  return server;
}

TEST(ReadAlerts, HealthyServerHasNone) {
  const Server server = listing("OK", "");
  const HealthReading reading = readingOf(server);
  EXPECT_TRUE(reading.events.empty());
  EXPECT_TRUE(reading.serviceConditionsSuffice);
  EXPECT_FALSE(reading.failure.has_value());
  EXPECT_TRUE(reading.unexplained.empty());
  EXPECT_TRUE(reading.wanted.empty());
}

TEST(ReadAlerts, ServerWithoutAListIsWalked) {
  EXPECT_FALSE(readingOf(Server()).serviceConditionsSuffice);
}

TEST(ReadAlerts, ThoroughReadingDoesNotTrustTheList) {
  EXPECT_FALSE(readingOf(listing("OK", ""), true).serviceConditionsSuffice);
}

TEST(ReadAlerts, ListedConditionsAreAlerts) {
  EXPECT_EQ(alertsOf(listing(
                "Critical",
                condition("V.1.0.Hot", "Critical", "Systems/1/Memory/D1") +
                    "," + condition("V.1.0.Odd", "Warning"))),
            (Lines{"Memory 2 V.1.0.Hot | About V.1.0.Hot.",
                   "Other 1 V.1.0.Odd | About V.1.0.Odd."}));
}

TEST(ReadAlerts, ExtraHoldsOriginAndTime) {
  const auto alerts = alertsIn(readingOf(
      listing("Warning", condition("V.1.0.A", "Warning", "Systems/1/Memory/D/",
                                   R"("Timestamp": "2026-01-02T03:04:05Z")") +
                             "," + condition("V.1.0.B", "Warning"))));
  ASSERT_EQ(alerts.size(), 2U);
  EXPECT_EQ(alerts[0].extra,
            "/redfish/v1/Systems/1/Memory/D 2026-01-02T03:04:05Z");
  EXPECT_EQ(alerts[1].extra, "/redfish/v1/ServiceConditions");
}

TEST(ReadAlerts, ConditionsOfSeverityOkAreNone) {
  EXPECT_EQ(alertsOf(listing("OK", condition("V.1.0.Fine", "OK"))), Lines{});
}

TEST(ReadAlerts, BadEntriesOfTheListAreSkipped) {
  EXPECT_EQ(alertsOf(listing("OK", R"(null, 7, "x", [])")), Lines{});
}

TEST(ReadAlerts, ConditionsOfResourcesAreAlerts) {
  Server server;
  server.put("Systems/1", holding(condition("V.1.0.A", "Warning")));
  server.linked(
      "Chassis/1", "Thermal",
      R"({"Fans": [{}, )" + holding(condition("V.1.0.B", "Critical")) + "]}");
  EXPECT_EQ(alertsOf(server), (Lines{"System 1 V.1.0.A | About V.1.0.A.",
                                     "Cooling 2 V.1.0.B | About V.1.0.B."}));
}

TEST(ReadAlerts, OriginOfAResourcesConditionIsItselfByDefault) {
  Server server;
  server.linked(
      "Chassis/1", "Thermal",
      R"({"Fans": [{}, )" + holding(condition("V.1.0.B", "Critical")) + "]}");
  EXPECT_EQ(alertsIn(readingOf(server)).at(0).extra,
            "/redfish/v1/Chassis/1/Thermal#/Fans/1");
}

TEST(ReadAlerts, SameConditionInTwoPlacesIsOneAlert) {
  Server server = listing(
      "Warning", condition("V.1.0.A", "Warning", "Systems/1/Memory/D1"));
  server.members("Systems/1", "Memory",
                 {{"D1", holding(condition("V.1.2.A", "Warning"))}});
  EXPECT_EQ(alertsOf(server), (Lines{"Memory 1 V.1.0.A | About V.1.0.A."}));
}

TEST(ReadAlerts, HigherSeverityOfTheSameConditionIsKept) {
  Server server = listing(
      "Warning", condition("V.1.0.A", "Warning", "Systems/1/Memory/D1"));
  server.members("Systems/1", "Memory",
                 {{"D1", holding(condition("V.1.0.A", "Critical"))}});
  EXPECT_EQ(alertsOf(server), (Lines{"Memory 2 V.1.0.A | About V.1.0.A."}));
}

TEST(ReadAlerts, OtherArgumentsMakeAnotherCondition) {
  EXPECT_EQ(alertsOf(listing("Warning",
                             condition("V.1.0.A", "Warning", "Systems/1",
                                       R"("MessageArgs": ["x"])") +
                                 "," +
                                 condition("V.1.0.A", "Warning", "Systems/1",
                                           R"("MessageArgs": ["y"])")))
                .size(),
            2U);
}

TEST(ReadAlerts, ConditionsWithoutIdentifierAreToldApartByTheirText) {
  const auto text = [](const std::string& message) {
    return R"({"Message": ")" + message + R"(", "Severity": "Warning"})";
  };
  EXPECT_EQ(alertsOf(listing("Warning", text("One.") + "," + text("Two.") +
                                            "," + text("One."))),
            (Lines{"Other 1  | One.", "Other 1  | Two."}));
}

TEST(ReadAlerts, ArgumentsAreSubstituted) {
  EXPECT_EQ(alertsOf(listing("Warning",
                             R"({"MessageId": "V.1.0.A", "Severity": "Warning",
                  "Message": "Fan %1 turns at %2 RPM, 5% less.",
                  "MessageArgs": ["N/A", 900]})")),
            (Lines{"Other 1 V.1.0.A | Fan N/A turns at 900 RPM, 5% less."}));
}

TEST(ReadAlerts, FinishedTextStaysAsItIs) {
  EXPECT_EQ(alertsOf(listing("Warning",
                             R"({"MessageId": "V.1.0.A", "Severity": "Warning",
                  "Message": "Runs at 50%1.", "MessageArgs": []})")),
            (Lines{"Other 1 V.1.0.A | Runs at 50%1."}));
}

TEST(ReadAlerts, TextsAreClean) {
  const auto alerts = alertsIn(readingOf(listing("Warning", R"({
      "MessageId": "V.1.0.A\u001b[2J", "Severity": "Warning",
      "Message": "Red\r\nalert\u202e", "Timestamp": "now\t"})")));
  ASSERT_EQ(alerts.size(), 1U);
  EXPECT_EQ(alerts[0].messageId, "V.1.0.A [2J");
  EXPECT_EQ(alerts[0].message, "Red alert");
  EXPECT_EQ(alerts[0].extra, "/redfish/v1/ServiceConditions now");
}

TEST(ReadAlerts, LongTextsAreCut) {
  const auto alerts = alertsIn(
      readingOf(listing("Warning", R"({"Severity": "Warning", "Message": ")" +
                                       std::string(70000, 'x') + R"("})")));
  ASSERT_EQ(alerts.size(), 1U);
  EXPECT_EQ(alerts[0].message.size(), 1024U);
}

TEST(ReadAlerts, RefusedOriginLeavesTheHolder) {
  const auto alerts = alertsIn(readingOf(listing("Warning", R"({
      "MessageId": "V.1.0.A", "Message": "A", "Severity": "Warning",
      "OriginOfCondition": {"@odata.id": "/redfish/v1/../../etc/passwd"}})")));
  ASSERT_EQ(alerts.size(), 1U);
  EXPECT_EQ(alerts[0].extra, "/redfish/v1/ServiceConditions");
}

TEST(ReadAlerts, OrderIsCategorySourceOriginIdentifier) {
  Server server =
      listing("Warning", condition("V.1.0.Z", "Warning", "Systems/1/Memory/B") +
                             "," + condition("V.1.0.Y", "Warning") + "," +
                             condition("V.1.0.X", "Warning", "Systems/1"));
  server.members("Systems/1", "Memory",
                 {{"A", holding(condition("V.1.0.W", "Warning"))},
                  {"B", holding(condition("V.1.0.V", "Warning") + "," +
                                condition("V.1.0.U", "Warning"))},
                  {"C", withHealth("Warning")}});
  EXPECT_EQ(alertsOf(server),
            (Lines{"System 1 V.1.0.X | About V.1.0.X.",
                   "Memory 1 V.1.0.Z | About V.1.0.Z.",
                   "Memory 1 V.1.0.W | About V.1.0.W.",
                   "Memory 1 V.1.0.U | About V.1.0.U.",
                   "Memory 1 V.1.0.V | About V.1.0.V.",
                   "Memory 1 " + std::string(kChanged) +
                       " | DIMM C: health is Warning, state Enabled.",
                   "Other 1 V.1.0.Y | About V.1.0.Y."}));
}

// Pointers to other resources.

std::string pointer(const std::string& origin) {
  return condition("Base.1.8.ConditionInRelatedResource", "Warning", origin);
}

TEST(ReadAlertsPointer, UnreadOriginIsWanted) {
  const HealthReading reading =
      readingOf(listing("Warning", pointer("Chassis/1/Sensors/Inlet")));
  EXPECT_EQ(wantedOf(reading), (Lines{"Chassis/1/Sensors/Inlet"}));
  EXPECT_EQ(reading.events.size(), 1U);
}

TEST(ReadAlertsPointer, ConditionsOfTheOriginTakeItsPlace) {
  Server server = listing("Warning", pointer("Chassis/1/Leak/1"));
  server.put("Chassis/1/Leak/1", holding(condition("V.1.0.Wet", "Critical")));
  const HealthReading reading = readingOf(server);
  EXPECT_EQ(alertLines(reading),
            (Lines{"System 2 V.1.0.Wet | About V.1.0.Wet."}));
  EXPECT_TRUE(reading.wanted.empty());
}

TEST(ReadAlertsPointer, OriginWithoutConditionsKeepsIt) {
  Server server = listing("Warning", pointer("Chassis/1/Leak/1"));
  for (const std::string_view text :
       {std::string_view(R"({"Status": {"Conditions": []}})"), kMissing,
        kBroken}) {
    server.put("Chassis/1/Leak/1", text);
    EXPECT_EQ(alertsOf(server).size(), 1U) << text;
    EXPECT_TRUE(readingOf(server).wanted.empty()) << text;
  }
}

TEST(ReadAlertsPointer, OriginWhoseConditionsAreFineKeepsIt) {
  Server server = listing("Warning", pointer("Chassis/1/Leak/1"));
  server.put("Chassis/1/Leak/1", holding(condition("V.1.0.Dry", "OK")));
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

TEST(ReadAlertsPointer, PointersAreFollowedOverSeveralResources) {
  Server server = listing("Warning", pointer("Chassis/1/A"));
  server.put("Chassis/1/A", holding(pointer("Chassis/1/B")));
  EXPECT_EQ(wantedOf(readingOf(server)), (Lines{"Chassis/1/B"}));
  server.put("Chassis/1/B", holding(condition("V.1.0.Wet", "Warning")));
  EXPECT_EQ(alertsOf(server), (Lines{"System 1 V.1.0.Wet | About V.1.0.Wet."}));
}

TEST(ReadAlertsPointer, PointersInACircleAreKept) {
  Server server = listing("Warning", pointer("Chassis/1/A"));
  server.put("Chassis/1/A", holding(pointer("Chassis/1/B")));
  server.put("Chassis/1/B", holding(pointer("Chassis/1/A")));
  EXPECT_EQ(alertsOf(server).size(), 2U);
}

TEST(ReadAlertsPointer, CircleWithAnEventInItLeadsToIt) {
  Server server = listing("Warning", pointer("Chassis/1/A"));
  server.put("Chassis/1/A", holding(pointer("Chassis/1/B") + "," +
                                    condition("V.1.0.Wet", "Warning")));
  server.put("Chassis/1/B", holding(pointer("Chassis/1/A")));
  EXPECT_EQ(alertsOf(server), (Lines{"System 1 V.1.0.Wet | About V.1.0.Wet."}));
}

TEST(ReadAlertsPointer, PointerToItselfIsKept) {
  Server server;
  server.put(
      "Systems/1",
      holding(condition("Base.1.8.ConditionInRelatedResource", "Warning")));
  EXPECT_EQ(alertsOf(server).size(), 1U);
}

TEST(ReadAlertsPointer, LongChainsEnd) {
  std::string parts;
  for (int i = 0; i < 2000; ++i) {
    parts += (i > 0 ? "," : "") +
             holding(pointer("Chassis/1/P#/L/" + std::to_string(i + 1)));
  }
  Server server = listing("Warning", pointer("Chassis/1/P#/L/0"));
  server.put("Chassis/1/P", R"({"L": [)" + parts + "]}");
  EXPECT_FALSE(alertsOf(server).empty());
}

TEST(ReadAlertsPointer, OriginInMakersFormatCounts) {
  Server server = listing("Warning", pointer("Chassis/1#/Oem/Part"));
  server.put("Chassis/1", R"({"Oem": {"Part": )" +
                              holding(condition("V.1.0.Wet", "Warning")) +
                              "}}");
  EXPECT_EQ(alertsOf(server), (Lines{"System 1 V.1.0.Wet | About V.1.0.Wet."}));
}

// Sensors.

TEST(ReadAlertsSensor, UnreadSensorIsWantedForItsCategory) {
  Server server = listing(
      "Warning", condition("V.1.0.Hot", "Warning", "Chassis/1/Sensors/Inlet"));
  EXPECT_EQ(wantedOf(readingOf(server)), (Lines{"Chassis/1/Sensors/Inlet"}));
  EXPECT_EQ(alertsOf(server), (Lines{"System 1 V.1.0.Hot | About V.1.0.Hot."}));
  server.put("Chassis/1/Sensors/Inlet",
             R"({"@odata.type": "#Sensor.v1_7_0.Sensor",
                 "ReadingType": "Temperature",
                 "Status": {"Health": "Warning", "State": "Enabled"}})");
  EXPECT_EQ(alertsOf(server),
            (Lines{"Cooling 1 V.1.0.Hot | About V.1.0.Hot."}));
  EXPECT_TRUE(readingOf(server).wanted.empty());
}

TEST(ReadAlertsSensor, WantedResourcesAreBounded) {
  std::string list;
  for (int i = 0; i < 500; ++i) {
    list += (i > 0 ? "," : "") +
            condition("V.1.0.Hot", "Warning",
                      "Chassis/1/Sensors/" + std::to_string(i));
  }
  const HealthReading reading = readingOf(listing("Warning", list));
  EXPECT_EQ(reading.events.size(), 500U);
  EXPECT_EQ(reading.wanted.size(), 64U);
}

// Registries.

Server withRegistry(const std::string& conditions, const std::string& entry) {
  Server server = listing("Warning", conditions);
  server.members("", "Registries", {{"V", R"({"Registry": "V.1.0", "Location": [
                     {"Language": "en", "Uri": "/redfish/v1/Files/V"}]})"}});
  server.put("Files/V", R"({"Messages": {"A": )" + entry + "}}");
  return server;
}

TEST(ReadAlertsRegistry, GivesTextAndSeverity) {
  EXPECT_EQ(
      alertsOf(withRegistry(R"({"MessageId": "V.1.0.A", "MessageArgs": ["x"]})",
                            R"({"Message": "About %1 and %2.",
                    "MessageSeverity": "Critical", "Severity": "Warning"})")),
      (Lines{"Other 2 V.1.0.A | About x and ."}));
}

TEST(ReadAlertsRegistry, OldSeverityStandsIn) {
  EXPECT_EQ(alertsOf(withRegistry(
                R"({"MessageId": "V.1.0.A", "Message": "Own."})",
                R"({"Message": "Not this.", "Severity": "Critical"})")),
            (Lines{"Other 2 V.1.0.A | Own."}));
}

TEST(ReadAlertsRegistry, SeverityOkDropsTheCondition) {
  EXPECT_EQ(
      alertsOf(withRegistry(R"({"MessageId": "V.1.0.A", "Message": "Own."})",
                            R"({"MessageSeverity": "OK"})")),
      Lines{});
}

TEST(ReadAlertsRegistry, IsWantedOnlyWhenSomethingIsMissing) {
  Server complete = listing("Warning", condition("V.1.0.A", "Warning"));
  complete.link("", "Registries");
  EXPECT_TRUE(readingOf(complete).wanted.empty());
  Server lacking =
      listing("Warning", R"({"MessageId": "V.1.0.A", "Severity": "Warning"})");
  lacking.link("", "Registries");
  EXPECT_EQ(wantedOf(readingOf(lacking)), (Lines{"Registries"}));
}

TEST(ReadAlertsRegistry, WithoutOneKeyAndArgumentsAreTheText) {
  EXPECT_EQ(alertsOf(listing("Warning",
                             R"({"MessageId": "V.1.0.FanSlow",
                                 "MessageArgs": ["3", 900]})")),
            (Lines{"Other 1 V.1.0.FanSlow | FanSlow: 3, 900"}));
}

TEST(ReadAlertsRegistry, ConditionWithNothingAtAllIsStillTold) {
  EXPECT_EQ(
      alertsOf(listing("Warning", R"({"Severity": "Warning"})")),
      (Lines{"Other 1  | ServiceConditions: the service reports a condition "
             "without a text."}));
}

// Services of several nodes.

TEST(ReadAlertsScope, ConditionsOfOtherNodesAreLeftOut) {
  Server server =
      listing("Critical",
              condition("V.1.0.A", "Critical", "Systems/2/Memory/D1") + "," +
                  condition("V.1.0.B", "Warning", "Chassis/2/Fans/1") + "," +
                  condition("V.1.0.C", "Warning", "Systems/1/Memory/D1") + "," +
                  condition("V.1.0.D", "Warning", "Chassis/E/Fans/1") + "," +
                  condition("V.1.0.E", "Warning"));
  server.put("Systems/1",
             R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  server.addNode("2");
  const Lines lines = alertsOf(server);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0], "Cooling 1 V.1.0.D | About V.1.0.D.");
  EXPECT_EQ(lines[1], "Memory 1 V.1.0.C | About V.1.0.C.");
  EXPECT_EQ(lines[2], "Other 1 V.1.0.E | About V.1.0.E.");
}

TEST(ReadAlertsScope, NothingIsWantedForOtherNodes) {
  Server server =
      listing("Warning",
              pointer("Systems/2/Leak/1") + "," +
                  condition("V.1.0.A", "Warning", "Chassis/2/Sensors/Inlet") +
                  R"(,{"MessageId": "V.1.0.B", "OriginOfCondition":
                                  {"@odata.id": "/redfish/v1/Systems/2"}})");
  server.link("", "Registries");
  server.addNode("2");
  EXPECT_EQ(wantedOf(readingOf(server)), Lines{});
}

TEST(ReadAlertsScope, HealthOfOtherNodesIsLeftOut) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  server.addNode("2");
  server.put("Systems/2/Memory/D1", withHealth("Critical"));
  server.put("Chassis/2/Thermal",
             R"({"Fans": [)" + withHealth("Critical") + "]}");
  EXPECT_EQ(alertsOf(server), Lines{});
}

}  // namespace
}  // namespace devhealth
