#include "syshealth/health/dev_health.h"

#include <algorithm>

#include "tests/suite/devhealth/run_fixture.h"
#include "tests/suite/log_recorder.h"

namespace Tarvex::DeviceHealth {
namespace {

using base::FailureKind;

class DevHealthTest : public RunFixture {
 protected:
  // Calls one getter after another; their statuses.
  std::vector<int> allStatuses() {
    DevHealth client(connection);
    std::vector<Alert> alerts;
    SystemBoard board;
    std::vector<Processor> processors;
    std::vector<Fan> fans;
    std::vector<DIMM> dimms;
    std::vector<Power> powers;
    std::vector<PCIAdapter> adapters;
    return {client.connect(),          client.getHealthSum(alerts),
            client.get_system(board),  client.get_processors(processors),
            client.get_fans(fans),     client.get_DIMMs(dimms),
            client.get_Powers(powers), client.get_PCIApaters(adapters)};
  }

  bool asked(const std::string& request) const {
    return script->count(request) > 0;
  }

  // The status of one getter, when a link answers so.
  int dimmStatus(const std::string& request, int status,
                 const std::string& body = "{}") {
    script->on(request, status, body);
    start();
    std::vector<DIMM> dimms;
    return DevHealth(connection).get_DIMMs(dimms);
  }
};

using Statuses = std::vector<int>;

TEST_F(DevHealthTest, EveryGetterConnectsByItself) {
  start();
  std::vector<Fan> fans;
  EXPECT_EQ(DevHealth(connection).get_fans(fans), 0);
  EXPECT_EQ(fans.size(), 8U);
}

TEST_F(DevHealthTest, GettersFillTheirRecords) {
  start();
  DevHealth client(connection);
  SystemBoard board;
  EXPECT_EQ(client.get_system(board), 0);
  EXPECT_FALSE(board.machineName.empty());
  std::vector<Processor> processors;
  EXPECT_EQ(client.get_processors(processors), 0);
  EXPECT_EQ(processors.size(), 2U);
  std::vector<DIMM> dimms;
  EXPECT_EQ(client.get_DIMMs(dimms), 0);
  EXPECT_EQ(dimms.size(), 20U);
  std::vector<Power> powers;
  EXPECT_EQ(client.get_Powers(powers), 0);
  EXPECT_EQ(powers.size(), 2U);
  std::vector<PCIAdapter> adapters;
  EXPECT_EQ(client.get_PCIApaters(adapters), 0);
  EXPECT_EQ(adapters.size(), 8U);
}

TEST_F(DevHealthTest, RecordsStayUntouchedOnFailure) {
  script->on("GET /redfish/v1/Systems/1/Memory", 500);
  start();
  std::vector<DIMM> dimms(1);
  dimms[0].model = "as it was";
  EXPECT_EQ(DevHealth(connection).get_DIMMs(dimms), -5);
  ASSERT_EQ(dimms.size(), 1U);
  EXPECT_EQ(dimms[0].model, "as it was");
}

TEST_F(DevHealthTest, WithoutAPoolThereIsNoConnection) {
  run.reset();
  EXPECT_EQ(allStatuses(), Statuses(8, -1));
}

TEST_F(DevHealthTest, UnknownHandleIsNoConnection) {
  start();
  for (const std::int64_t handle :
       {std::int64_t{7}, std::int64_t{-1}, INT64_MIN, INT64_MAX}) {
    connection.service = handle;
    EXPECT_EQ(allStatuses(), Statuses(8, -1)) << handle;
  }
  ASSERT_TRUE(run->lastFailure().has_value());
  EXPECT_EQ(run->lastFailure()->cause, "there is no connection to this target");
}

TEST_F(DevHealthTest, NodeThatDoesNotExistIsNotSupported) {
  start();
  connection.nodeIndex = 1;
  EXPECT_EQ(allStatuses(), Statuses(8, -4));
  EXPECT_EQ(run->lastFailure()->kind, FailureKind::kNoSystem);
}

TEST_F(DevHealthTest, ServiceWithoutSystemsIsNotSupported) {
  script->on("GET /redfish/v1/Systems", 200, R"({"Members": []})");
  start();
  EXPECT_EQ(allStatuses(), Statuses(8, -4));
}

TEST_F(DevHealthTest, OtherServerIsNotSupported) {
  script->on("GET /redfish/v1/", 200, R"({"hello": "world"})");
  start();
  EXPECT_EQ(allStatuses(), Statuses(8, -4));
  EXPECT_EQ(run->lastFailure()->kind, FailureKind::kNotRedfish);
}

TEST_F(DevHealthTest, UnreachableTargetIsNoConnection) {
  script->on("GET /redfish/v1/", failureOf(FailureKind::kNameNotResolved));
  start();
  EXPECT_EQ(allStatuses(), Statuses(8, -1));
  EXPECT_EQ(run->lastFailure()->kind, FailureKind::kNameNotResolved);
}

TEST_F(DevHealthTest, UntrustedCertificateIsNoConnection) {
  script->on("GET /redfish/v1/", failureOf(FailureKind::kCertificate));
  start();
  EXPECT_EQ(DevHealth(connection).connect(), -1);
}

TEST_F(DevHealthTest, TimeOutBeforeTheRootIsNoConnection) {
  script->on("GET /redfish/v1/", failureOf(FailureKind::kReadTimeout));
  start();
  EXPECT_EQ(DevHealth(connection).connect(), -1);
}

TEST_F(DevHealthTest, TimeOutOfAListIsUnreadable) {
  script->on("GET /redfish/v1/Systems/1/Memory",
             failureOf(FailureKind::kReadTimeout));
  start();
  std::vector<DIMM> dimms;
  EXPECT_EQ(DevHealth(connection).get_DIMMs(dimms), -3);
}

TEST_F(DevHealthTest, TimeOutOfTheSystemIsUnreadable) {
  script->on("GET /redfish/v1/Systems/1", failureOf(FailureKind::kReadTimeout));
  start();
  EXPECT_EQ(DevHealth(connection).connect(), -3);
}

TEST_F(DevHealthTest, RefusedLoginIsRefused) {
  options.user = "admin";
  options.password = base::Secret("wrong");
  script->on("POST /redfish/v1/SessionService/Sessions", 401);
  start();
  EXPECT_EQ(DevHealth(connection).connect(), -2);
  EXPECT_EQ(run->lastFailure()->kind, FailureKind::kAuthentication);
}

TEST_F(DevHealthTest, MissingPrivilegeForAListIsRefused) {
  EXPECT_EQ(dimmStatus("GET /redfish/v1/Systems/1/Memory", 403), -2);
}

TEST_F(DevHealthTest, ServerErrorOfAListIsInternal) {
  EXPECT_EQ(dimmStatus("GET /redfish/v1/Systems/1/Memory", 501), -5);
}

TEST_F(DevHealthTest, ListThatIsNoJsonIsUnreadable) {
  EXPECT_EQ(dimmStatus("GET /redfish/v1/Systems/1/Memory", 200, "<html>"), -3);
}

TEST_F(DevHealthTest, MissingListIsAnEmptyTable) {
  EXPECT_EQ(dimmStatus("GET /redfish/v1/Systems/1/Memory", 404), 0);
}

TEST_F(DevHealthTest, FailureOfAMappingIsLoggedAndReported) {
  script->on("GET /redfish/v1/Systems/1/Processors/CPU1", 501);
  script->on("GET /redfish/v1/Systems/1/Processors/CPU2", 501);
  start();
  std::vector<Processor> processors;
  EXPECT_EQ(DevHealth(connection).get_processors(processors), -3);
  ASSERT_TRUE(run->lastFailure().has_value());
  EXPECT_NE(run->lastFailure()->cause.find("none of 2 parts"),
            std::string::npos);
  EXPECT_FALSE(run->lastFailure()->address.empty());
  const auto& lines = loggedLines();
  EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const LogLine& line) {
    return line.level == 1 &&
           line.text.find("none of 2 parts") != std::string::npos;
  }));
}

TEST_F(DevHealthTest, SuccessReportsNoFailure) {
  start();
  EXPECT_EQ(allStatuses(), Statuses(8, 0));
  EXPECT_FALSE(run->lastFailure().has_value());
}

// The health summary.

TEST_F(DevHealthTest, TrustedListSparesTheWalk) {
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), 0);
  EXPECT_EQ(alerts.size(), 2U);
  EXPECT_FALSE(asked("GET /redfish/v1/Systems/1/Memory"));
  EXPECT_FALSE(asked("GET /redfish/v1/Chassis/1/ThermalSubsystem"));
}

TEST_F(DevHealthTest, ThoroughReadingFindsTheSame) {
  options.prefetch = redfish::kWantHealth | redfish::kWantThorough;
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), 0);
  EXPECT_EQ(alerts.size(), 2U);
  EXPECT_TRUE(asked("GET /redfish/v1/Systems/1/Memory/P1-A1"));
}

// The rack server without its list of conditions, and with a module that has
// a fault which the summary of the memory does not tell.
class LyingRollups : public DevHealthTest {
 protected:
  explicit LyingRollups(const std::string& systemHealth = "Critical") {
    script->on("GET /redfish/v1/ServiceConditions", 404);
    script->on("GET /redfish/v1/Systems/1", 200,
               R"({
        "@odata.id": "/redfish/v1/Systems/1",
        "@odata.type": "#ComputerSystem.v1_20_0.ComputerSystem",
        "Id": "1", "Name": "System",
        "Status": {"State": "Enabled", "Health": ")" +
                   systemHealth + R"("},
        "MemorySummary": {"Status": {"HealthRollup": "OK"}},
        "Memory": {"@odata.id": "/redfish/v1/Systems/1/Memory"},
        "Links": {"Chassis": [{"@odata.id": "/redfish/v1/Chassis/1"}]}})");
    script->on("GET /redfish/v1/Chassis/1", 200, R"({"Id": "1"})");
    script->on("GET /redfish/v1/Managers", 404);
    script->on("GET /redfish/v1/Systems/1/Memory/P1-A1", 200, R"({
        "Id": "P1-A1", "Name": "Module A1",
        "Status": {"State": "Enabled", "Health": "Critical"}})");
  }
};

class HonestSystem : public LyingRollups {
 protected:
  HonestSystem() : LyingRollups("OK") {}
};

TEST_F(LyingRollups, UnexplainedHealthOpensTheSkippedBranches) {
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), 0);
  ASSERT_EQ(alerts.size(), 1U);
  EXPECT_EQ(alerts[0].category, "Memory");
  EXPECT_EQ(alerts[0].message, "Module A1: health is Critical, state Enabled.");
}

TEST_F(HonestSystem, BranchOfGoodHealthIsNotEntered) {
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), 0);
  EXPECT_TRUE(alerts.empty());
  EXPECT_FALSE(asked("GET /redfish/v1/Systems/1/Memory"));
}

TEST_F(LyingRollups, HealthThatStaysUnexplainedIsTold) {
  script->answers.erase("GET /redfish/v1/Systems/1/Memory/P1-A1");
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), 0);
  ASSERT_EQ(alerts.size(), 1U);
  EXPECT_EQ(alerts[0].category, "System");
  EXPECT_TRUE(asked("GET /redfish/v1/Systems/1/Memory/P2-F1"));
}

TEST_F(LyingRollups, UnreadableBranchFailsTheSummary) {
  script->on("GET /redfish/v1/Systems/1/Memory", 501);
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), -5);
}

TEST_F(DevHealthTest, RegistriesAreReadForTextsThatAreMissing) {
  serve("edge");
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), 0);
  EXPECT_TRUE(asked("GET /redfish/v1/Registries/ThornmereAlert/en"));
  EXPECT_TRUE(std::any_of(alerts.begin(), alerts.end(), [](const Alert& alert) {
    return alert.message == "The front panel of edge-host is open.";
  }));
}

TEST_F(DevHealthTest, RegistriesAreNotReadWhereNothingIsMissing) {
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), 0);
  EXPECT_FALSE(asked("GET /redfish/v1/Registries"));
}

TEST_F(DevHealthTest, RegistryThatCannotBeReadOnlyCostsTheText) {
  serve("edge");
  script->on("GET /redfish/v1/Registries/ThornmereAlert/en", 501);
  start();
  std::vector<Alert> alerts;
  EXPECT_EQ(DevHealth(connection).getHealthSum(alerts), 0);
  EXPECT_TRUE(std::any_of(alerts.begin(), alerts.end(), [](const Alert& alert) {
    return alert.message == "FrontPanelOpen: edge-host";
  }));
}

}  // namespace
}  // namespace Tarvex::DeviceHealth
