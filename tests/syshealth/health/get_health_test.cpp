#include <gmock/gmock.h>

#include <stdexcept>

#include "syshealth/app/system_health.h"
#include "tests/fakes/suite_test.h"

namespace {

using Tarvex::DeviceHealth::Alert;
using testing::ElementsAre;
using testing::SizeIs;

class GetHealth : public fakes::SuiteTest {
 protected:
  GetHealth() { fakes::clearJournal(); }

  int read(const std::string& address) {
    return application.getHealth(target(address), alerts);
  }

  SystemHealth application;
  std::vector<Alert> alerts;
};

TEST_F(GetHealth, ReadsTheAlertsOfAConnectedClient) {
  fakes::script().targets["a"].alerts = {
      {"extra", "E1", 2, "Memory", "broken"}};
  EXPECT_EQ(read("a"), 0);
  ASSERT_THAT(alerts, SizeIs(1));
  EXPECT_EQ(alerts[0].extra, "extra");
  EXPECT_EQ(alerts[0].messageId, "E1");
  EXPECT_EQ(alerts[0].severity, 2);
  EXPECT_EQ(alerts[0].category, "Memory");
  EXPECT_EQ(alerts[0].message, "broken");
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::getHealth",
                          "call DevHealth(a)", "call DevHealth::connect()",
                          "call DevHealth::getHealthSum(list of 0)",
                          "log 4: Exiting  SystemHealth::getHealth",
                          "call ~DevHealth()"));
}

TEST_F(GetHealth, ReplacesEarlierAlerts) {
  fakes::script().targets["a"].alerts = {{"", "A1", 0, "Disks", ""},
                                         {"", "A2", 0, "Disks", ""}};
  fakes::script().targets["b"].alerts = {{"", "B1", 0, "Disks", ""}};
  read("a");
  read("b");
  ASSERT_THAT(alerts, SizeIs(1));
  EXPECT_EQ(alerts[0].messageId, "B1");
}

TEST_F(GetHealth, FailedConnectEmptiesTheList) {
  alerts = {{"", "old", 0, "Disks", ""}};
  fakes::script().targets["a"].connectStatus = -1;
  read("a");
  EXPECT_THAT(alerts, SizeIs(0));
}

TEST_F(GetHealth, FailedConnectIsPassedOnUnchanged) {
  fakes::script().targets["a"].connectStatus = 5;
  EXPECT_EQ(read("a"), 5);
  EXPECT_THAT(
      fakes::journal(),
      ElementsAre("log 4: Entering  SystemHealth::getHealth",
                  "call DevHealth(a)", "call DevHealth::connect()",
                  "log 1: DevHealth connect failed!", "call ~DevHealth()"));
}

TEST_F(GetHealth, FailedReadIsPassedOnUnchanged) {
  fakes::script().targets["a"].healthStatus = -3;
  EXPECT_EQ(read("a"), -3);
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::getHealth",
                          "call DevHealth(a)", "call DevHealth::connect()",
                          "call DevHealth::getHealthSum(list of 0)",
                          "log 1: DevHealth getHealthSum failed!",
                          "call ~DevHealth()"));
}

TEST_F(GetHealth, FailuresAreForTheLogOnly) {
  fakes::script().targets["a"].connectStatus = -1;
  fakes::script().targets["b"].healthStatus = -1;
  read("a");
  read("b");
  EXPECT_EQ(errors(), "");
  EXPECT_EQ(output(), "");
}

TEST_F(GetHealth, ExceptionLeavesNoExitTraceAndDestroysTheClient) {
  fakes::script().throwingCall = "DevHealth::connect()";
  EXPECT_THROW(read("a"), std::runtime_error);
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::getHealth",
                          "call DevHealth(a)", "call DevHealth::connect()",
                          "call ~DevHealth()"));
}

}  // namespace
