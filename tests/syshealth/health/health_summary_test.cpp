#include <gmock/gmock.h>

#include <stdexcept>

#include "syshealth/app/system_health.h"
#include "tests/fakes/suite_test.h"

namespace {

using fakes::Kind;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr const char* kEntering =
    "log 4: Entering  SystemHealth::showHealthSummary";
constexpr const char* kExiting =
    "log 4: Exiting  SystemHealth::showHealthSummary";

class ShowHealthSummary : public fakes::SuiteTest {
 protected:
  ShowHealthSummary() {
    fakes::script().ipmiTargets = {target("a", 0), target("b", 1),
                                   target("c", 2)};
    fakes::clearJournal();
  }

  std::int32_t show(std::int32_t mode) {
    return application.showHealthSummary(mode);
  }

  SystemHealth application;
};

TEST_F(ShowHealthSummary, OutOfBandReadsProbesAndPrintsInOrder) {
  EXPECT_EQ(show(kConnectModeOutOfBand), 0);
  std::vector<std::string> calls = fakes::noted(Kind::kCall);
  EXPECT_THAT(calls, ElementsAre("ConnectInfo::Getinstance()",
                                 "ConnectInfo::TryCimCon(default record)",
                                 "OrvaneTypeAcquire(reached)",
                                 "OrvaneTypeAcquire::GetOrvaneType(0)",
                                 "ConnectInfo::Getinstance()",
                                 "ConnectInfo::GetIpmiConnectInfo(list of 0)",
                                 "DevHealth(a)", "DevHealth::connect()",
                                 "DevHealth::getHealthSum(list of 0)",
                                 "~DevHealth()", "~OrvaneTypeAcquire()"));
}

TEST_F(ShowHealthSummary, SuccessTracesAndLogsTheGeneration) {
  show(kConnectModeOutOfBand);
  std::vector<std::string> log = fakes::noted(Kind::kLog);
  log.resize(6);
  EXPECT_THAT(log,
              ElementsAre("4: Entering  SystemHealth::showHealthSummary",
                          "3: system health succeeded in getting bmc_type: 3",
                          "4: Entering  SystemHealth::getHealth",
                          "4: Exiting  SystemHealth::getHealth",
                          "4: Entering  SystemHealth::showHealth", "3: "));
  EXPECT_EQ(fakes::noted(Kind::kLog).back(),
            "4: Exiting  SystemHealth::showHealthSummary");
  EXPECT_EQ(errors(), "");
}

TEST_F(ShowHealthSummary, EmptyAlertListPrintsEightNormalLines) {
  EXPECT_EQ(show(kConnectModeOutOfBand), 0);
  EXPECT_EQ(output(),
            "\n"
            "==================================\n"
            "System                         Normal \n"
            "Processors                     Normal \n"
            "Cooling                        Normal \n"
            "Memory                         Normal \n"
            "PCI                            Normal \n"
            "Power                          Normal \n"
            "Disks                          Normal \n"
            "Other                          Normal \n"
            "\n"
            "Active Events with Error/Warning:\n");
}

TEST_F(ShowHealthSummary, SortsAlertsBySeverityAscending) {
  fakes::script().targets["a"].alerts = {{"", "C2", 2, "Cooling", "stands"},
                                         {"", "C1", 1, "Cooling", "slow"}};
  EXPECT_EQ(show(kConnectModeOutOfBand), 0);
  const std::string report = output();
  EXPECT_NE(report.find("Cooling                        Error \n"),
            std::string::npos);
  const std::size_t warning = report.find("Message ID:                    C1 ");
  const std::size_t error = report.find("Message ID:                    C2 ");
  ASSERT_NE(warning, std::string::npos);
  ASSERT_NE(error, std::string::npos);
  EXPECT_LT(warning, error);
}

TEST_F(ShowHealthSummary, MissingSettingsServiceWritesNothing) {
  fakes::script().settingsFetches = 0;
  EXPECT_EQ(show(kConnectModeOutOfBand), 1);
  EXPECT_THAT(fakes::journal(),
              ElementsAre(kEntering, "call ConnectInfo::Getinstance()"));
}

TEST_F(ShowHealthSummary, ServiceThatVanishesBeforeTheListWritesNothing) {
  fakes::script().settingsFetches = 1;
  EXPECT_EQ(show(kConnectModeOutOfBand), 1);
  EXPECT_THAT(fakes::noted(Kind::kError), ElementsAre());
  EXPECT_THAT(fakes::journal(), Not(Contains(kExiting)));
}

TEST_F(ShowHealthSummary, ServiceThatVanishesBeforeTheParsingWritesNothing) {
  fakes::script().settingsFetches = 2;
  fakes::script().ipmiTargets.clear();
  EXPECT_EQ(show(kConnectModeOutOfBand), 1);
  EXPECT_THAT(fakes::noted(Kind::kError), ElementsAre());
  EXPECT_THAT(fakes::journal(), Not(Contains(kExiting)));
}

TEST_F(ShowHealthSummary, UnreachableTargetGivesItsCode) {
  fakes::script().reachability = 12;
  EXPECT_EQ(show(kConnectModeOutOfBand), 12);
  EXPECT_THAT(fakes::journal(),
              ElementsAre(kEntering, "call ConnectInfo::Getinstance()",
                          "call ConnectInfo::TryCimCon(default record)",
                          "log 1: Authentication failed.",
                          "err Brivel failed to show system health.",
                          "log 1: Brivel failed to show system health."));
}

TEST_F(ShowHealthSummary, UnreachableTargetKeepsAll32BitsOfItsCode) {
  fakes::script().reachability = 0x40069;
  EXPECT_EQ(show(kConnectModeInBand), 0x40069);
  EXPECT_THAT(fakes::noted(Kind::kLog), Contains("1: Query BMC error."));
}

TEST_F(ShowHealthSummary, FailedProbeIsConnectionFailed) {
  fakes::script().probeStatus = -1;
  EXPECT_EQ(show(kConnectModeOutOfBand), 13);
  EXPECT_THAT(fakes::journal(),
              ElementsAre(kEntering, "call ConnectInfo::Getinstance()",
                          "call ConnectInfo::TryCimCon(default record)",
                          "call OrvaneTypeAcquire(reached)",
                          "call OrvaneTypeAcquire::GetOrvaneType(0)",
                          "log 1: Connection failed.",
                          "err Brivel failed to show system health.",
                          "log 1: Brivel failed to show system health.",
                          "call ~OrvaneTypeAcquire()"));
}

TEST_F(ShowHealthSummary, PositiveProbeStatusIsAFailureToo) {
  fakes::script().probeStatus = 1;
  EXPECT_EQ(show(kConnectModeOutOfBand), 13);
}

TEST_F(ShowHealthSummary, SecondGenerationIsRefusedBeforeTheTargetList) {
  fakes::script().generation = Tarvex::Agentless::kOrvaneType2;
  EXPECT_EQ(show(kConnectModeOutOfBand), 25);
  EXPECT_THAT(
      fakes::journal(),
      ElementsAre(kEntering, "call ConnectInfo::Getinstance()",
                  "call ConnectInfo::TryCimCon(default record)",
                  "call OrvaneTypeAcquire(reached)",
                  "call OrvaneTypeAcquire::GetOrvaneType(0)",
                  "log 3: system health succeeded in getting bmc_type: 2",
                  "log 1: Function not supported on target system.",
                  "err Brivel failed to show system health.",
                  "log 1: Brivel failed to show system health.",
                  "call ~OrvaneTypeAcquire()"));
}

TEST_F(ShowHealthSummary, EveryOtherGenerationIsRefused) {
  for (const int generation : {0, 1, 4}) {
    fakes::script().generation =
        static_cast<Tarvex::Agentless::OrvaneTypeValue>(generation);
    EXPECT_EQ(show(kConnectModeOutOfBand), 25) << generation;
  }
}

TEST_F(ShowHealthSummary, FailedTargetListGivesTheParsedCode) {
  fakes::script().ipmiError = static_cast<ConnectionErr>(9);
  fakes::script().parsedError = {18, ""};
  EXPECT_EQ(show(kConnectModeOutOfBand), 18);
  EXPECT_THAT(
      fakes::journal(),
      ElementsAre(kEntering, "call ConnectInfo::Getinstance()",
                  "call ConnectInfo::TryCimCon(default record)",
                  "call OrvaneTypeAcquire(reached)",
                  "call OrvaneTypeAcquire::GetOrvaneType(0)",
                  "log 3: system health succeeded in getting bmc_type: 3",
                  "call ConnectInfo::Getinstance()",
                  "call ConnectInfo::GetIpmiConnectInfo(list of 0)",
                  "call ConnectInfo::Getinstance()",
                  "call ConnectInfo::ParseCimError(9)", "log 1: Timeout.",
                  "err Brivel failed to show system health.",
                  "log 1: Brivel failed to show system health.",
                  "call ~OrvaneTypeAcquire()"));
}

TEST_F(ShowHealthSummary, EmptyTargetListIsAFailureWithErrorZero) {
  fakes::script().ipmiTargets.clear();
  fakes::script().parsedError = {13, ""};
  EXPECT_EQ(show(kConnectModeInBand), 13);
  EXPECT_THAT(fakes::noted(Kind::kCall),
              Contains("ConnectInfo::ParseCimError(0)"));
  EXPECT_EQ(errors(), "Brivel failed to show system health.\n");
}

TEST_F(ShowHealthSummary, TargetListFailureComesBeforeAnUnsupportedMode) {
  fakes::script().ipmiTargets.clear();
  fakes::script().parsedError = {13, ""};
  EXPECT_EQ(show(kConnectModeEsxi), 13);
}

TEST_F(ShowHealthSummary, OutOfBandReadsTheFirstTargetOnly) {
  giveNode(2);
  EXPECT_EQ(show(kConnectModeOutOfBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre("a"));
  EXPECT_THAT(fakes::noted(Kind::kCall),
              Not(Contains("ArgParser::GetInstance()")));
}

TEST_F(ShowHealthSummary, InBandWithoutNodeShowsTheLastTarget) {
  fakes::script().targets["a"].alerts = {{"", "A1", 2, "Disks", "of a"}};
  fakes::script().targets["b"].alerts = {{"", "B1", 2, "Disks", "of b"}};
  fakes::script().targets["c"].alerts = {{"", "C1", 1, "Disks", "of c"}};
  EXPECT_EQ(show(kConnectModeInBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre("a", "b", "c"));
  EXPECT_NE(output().find("Disks                          Warning \n"),
            std::string::npos);
  EXPECT_NE(output().find("of c"), std::string::npos);
  EXPECT_EQ(output().find("of a"), std::string::npos);
  EXPECT_EQ(output().find("of b"), std::string::npos);
}

TEST_F(ShowHealthSummary, InBandWithoutParserReadsEveryTarget) {
  giveNode(99);
  fakes::script().parserFetches = 0;
  EXPECT_EQ(show(kConnectModeInBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre("a", "b", "c"));
}

TEST_F(ShowHealthSummary, NodePicksTheTargetOfThatNode) {
  fakes::script().ipmiTargets = {target("a", 0), target("b", 1)};
  giveNode(2);
  EXPECT_EQ(show(kConnectModeInBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre("b"));
}

TEST_F(ShowHealthSummary, NodeThatNoTargetHasShowsAnEmptySummary) {
  fakes::script().ipmiTargets = {target("a", 5), target("b", 6)};
  giveNode(1);
  EXPECT_EQ(show(kConnectModeInBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre());
  EXPECT_NE(output().find("Other                          Normal \n"),
            std::string::npos);
  EXPECT_EQ(fakes::journal().back(), "call ~OrvaneTypeAcquire()");
  EXPECT_THAT(fakes::journal(), Contains(kExiting));
}

TEST_F(ShowHealthSummary, NodeOutOfRangeIsInvalid) {
  std::string expected;
  for (const int node : {0, -3, 4}) {
    giveNode(node);
    EXPECT_EQ(show(kConnectModeInBand), 1) << node;
    expected += "\nThe input node is invalid \n";
  }
  EXPECT_EQ(errors(), expected);
  EXPECT_EQ(output(), "");
  EXPECT_THAT(targetsRead(), ElementsAre());
  EXPECT_THAT(fakes::journal(), Not(Contains(kExiting)));
}

TEST_F(ShowHealthSummary, FailedConnectEndsInItsOrder) {
  fakes::script().targets["a"].connectStatus = -1;
  EXPECT_EQ(show(kConnectModeOutOfBand), 13);
  std::vector<std::string> end = fakes::journal();
  end.erase(end.begin(), end.begin() + 8);
  EXPECT_THAT(
      end,
      ElementsAre("log 4: Entering  SystemHealth::getHealth",
                  "call DevHealth(a)", "call DevHealth::connect()",
                  "log 1: DevHealth connect failed!", "call ~DevHealth()",
                  "err ", "log 1: ", "err Brivel failed to show system health.",
                  "log 1: Brivel failed to show system health.", kExiting,
                  "err Connection failed.", "log 1: Connection failed.",
                  "call ~OrvaneTypeAcquire()"));
  EXPECT_EQ(output(), "");
}

TEST_F(ShowHealthSummary, UnknownConnectStatusIsInternalError) {
  fakes::script().targets["a"].connectStatus = 5;
  EXPECT_EQ(show(kConnectModeOutOfBand), 17);
  EXPECT_EQ(errors(),
            "\nBrivel failed to show system health.\nInternal error.\n");
}

TEST_F(ShowHealthSummary, FailedHealthReadGivesTheResultOfItsStatus) {
  fakes::script().targets["a"].healthStatus = -1;
  EXPECT_EQ(show(kConnectModeOutOfBand), 13);
  fakes::script().targets["a"].healthStatus = -3;
  EXPECT_EQ(show(kConnectModeOutOfBand), 10);
  fakes::script().targets["a"].healthStatus = -4;
  EXPECT_EQ(show(kConnectModeOutOfBand), 25);
  EXPECT_EQ(errors(),
            "\nBrivel failed to show system health.\nConnection failed.\n"
            "\nBrivel failed to show system health.\nFailed to read file.\n"
            "\nBrivel failed to show system health.\n"
            "Function not supported on target system.\n");
  EXPECT_EQ(output(), "");
}

TEST_F(ShowHealthSummary, FailedHealthReadIsLogged) {
  fakes::script().targets["a"].healthStatus = -1;
  show(kConnectModeOutOfBand);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              Contains("1: DevHealth getHealthSum failed!"));
}

TEST_F(ShowHealthSummary, InBandStopsAtTheFirstFailure) {
  fakes::script().targets["b"].healthStatus = -3;
  EXPECT_EQ(show(kConnectModeInBand), 10);
  EXPECT_THAT(targetsRead(), ElementsAre("a", "b"));
  EXPECT_EQ(output(), "");
}

TEST_F(ShowHealthSummary, EsxiModeIsRefusedAfterTheTargetList) {
  EXPECT_EQ(show(kConnectModeEsxi), 25);
  EXPECT_EQ(errors(),
            "\nBrivel failed to show system health.\n"
            "Function not supported on target system.\n");
  EXPECT_EQ(output(), "");
  std::vector<std::string> end = fakes::journal();
  end.erase(end.begin(), end.begin() + 7);
  EXPECT_THAT(
      end,
      ElementsAre("call ConnectInfo::GetIpmiConnectInfo(list of 0)", "err ",
                  "log 1: ", "err Brivel failed to show system health.",
                  "log 1: Brivel failed to show system health.", kExiting,
                  "err Function not supported on target system.",
                  "log 1: Function not supported on target system.",
                  "call ~OrvaneTypeAcquire()"));
}

TEST_F(ShowHealthSummary, UnknownModesAreRefusedLikeEsxi) {
  for (const std::int32_t mode : {0, 3, 5, -1}) {
    EXPECT_EQ(show(mode), 25) << mode;
  }
}

TEST_F(ShowHealthSummary, EveryErrorLineIsAlsoLogged) {
  fakes::script().targets["a"].healthStatus = -3;
  show(kConnectModeOutOfBand);
  for (const std::string& line : fakes::noted(Kind::kError)) {
    EXPECT_THAT(fakes::noted(Kind::kLog), Contains("1: " + line));
  }
}

TEST_F(ShowHealthSummary, ExceptionLeavesNoExitTrace) {
  fakes::script().throwingCall = "OrvaneTypeAcquire::GetOrvaneType(0)";
  EXPECT_THROW(show(kConnectModeOutOfBand), std::runtime_error);
  EXPECT_THAT(fakes::journal(), Not(Contains(kExiting)));
  EXPECT_EQ(fakes::journal().back(), "call ~OrvaneTypeAcquire()");
  EXPECT_EQ(errors(), "");
}

}  // namespace
