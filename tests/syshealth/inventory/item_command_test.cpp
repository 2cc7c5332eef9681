#include <gmock/gmock.h>

#include <stdexcept>

#include "syshealth/app/system_health.h"
#include "tests/fakes/suite_test.h"

namespace {

using fakes::Kind;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr const char* kEnteringItem =
    "log 4: Entering  SystemHealth::showSystemItem";
constexpr const char* kExitingItem =
    "log 4: Exiting  SystemHealth::showSystemItem";

class ShowSystemItem : public fakes::SuiteTest {
 protected:
  ShowSystemItem() {
    fakes::script().cimTargets = {target("a", 0), target("b", 1)};
    fakes::script().targets["a"].fans = {{"fan of a", "", ""}};
    fakes::script().targets["b"].fans = {{"fan of b", "", ""}};
    fakes::clearJournal();
  }

  std::int32_t show(const std::string& item, std::int32_t mode) {
    return application.showSystemItem(item, static_cast<ConnectMode>(mode));
  }

  SystemHealth application;
};

TEST_F(ShowSystemItem, OutOfBandReadsTheFirstTargetOnly) {
  giveNode(2);
  EXPECT_EQ(show("fan", kConnectModeOutOfBand), 0);
  EXPECT_THAT(
      fakes::noted(Kind::kCall),
      ElementsAre("ConnectInfo::Getinstance()",
                  "ConnectInfo::GetCimConnectInfo(list of 0)", "DevHealth(a)",
                  "DevHealth::get_fans(list of 0)", "~DevHealth()"));
  EXPECT_EQ(output(),
            "\n"
            "Fan:\n"
            "                     Name             Desired Speed Health state\n"
            "                 fan of a                           \n");
  EXPECT_EQ(errors(), "");
}

TEST_F(ShowSystemItem, SuccessTracesNoExit) {
  EXPECT_EQ(show("fan", kConnectModeOutOfBand), 0);
  EXPECT_EQ(show("fan", kConnectModeInBand), 0);
  EXPECT_EQ(fakes::journal().front(), kEnteringItem);
  EXPECT_THAT(fakes::journal(), Not(Contains(kExitingItem)));
}

TEST_F(ShowSystemItem, InBandWithoutNodeReportsEveryTarget) {
  EXPECT_EQ(show("fan", kConnectModeInBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre("a", "b"));
  EXPECT_EQ(output(),
            "\n"
            "Fan:\n"
            "                     Name             Desired Speed Health state\n"
            "                 fan of a                           \n"
            "\n"
            "Fan:\n"
            "                     Name             Desired Speed Health state\n"
            "                 fan of b                           \n");
}

TEST_F(ShowSystemItem, InBandWithoutParserReportsEveryTarget) {
  giveNode(99);
  fakes::script().parserFetches = 0;
  EXPECT_EQ(show("fan", kConnectModeInBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre("a", "b"));
}

TEST_F(ShowSystemItem, NodeReportsTheTargetOfThatNode) {
  giveNode(1);
  EXPECT_EQ(show("fan", kConnectModeInBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre("a"));
}

TEST_F(ShowSystemItem, NodeReportsEveryTargetOfThatNode) {
  fakes::script().cimTargets = {target("a", 1), target("b", 1)};
  giveNode(2);
  EXPECT_EQ(show("fan", kConnectModeInBand), 0);
  EXPECT_THAT(targetsRead(), ElementsAre("a", "b"));
}

TEST_F(ShowSystemItem, NodeThatNoTargetHasPrintsNothing) {
  fakes::script().cimTargets = {target("a", 5), target("b", 6)};
  giveNode(1);
  EXPECT_EQ(show("fan", kConnectModeInBand), 0);
  EXPECT_EQ(output(), "");
  EXPECT_EQ(errors(), "");
  EXPECT_THAT(targetsRead(), ElementsAre());
}

TEST_F(ShowSystemItem, NodeOutOfRangeIsInvalidWhateverTheItem) {
  std::string expected;
  for (const int node : {0, -1, 3}) {
    for (const char* item : {"fan", "unknown"}) {
      giveNode(node);
      EXPECT_EQ(show(item, kConnectModeInBand), 1) << node;
      expected += "\nThe input node is invalid \n";
    }
  }
  EXPECT_EQ(errors(), expected);
  EXPECT_EQ(output(), "");
  EXPECT_THAT(targetsRead(), ElementsAre());
  EXPECT_THAT(fakes::journal(), Not(Contains(kExitingItem)));
}

TEST_F(ShowSystemItem, MissingSettingsServiceWritesNothing) {
  fakes::script().settingsFetches = 0;
  EXPECT_EQ(show("fan", kConnectModeInBand), 1);
  EXPECT_THAT(fakes::journal(),
              ElementsAre(kEnteringItem, "call ConnectInfo::Getinstance()"));
}

TEST_F(ShowSystemItem, ServiceThatVanishesBeforeTheParsingWritesNothing) {
  fakes::script().settingsFetches = 1;
  fakes::script().cimTargets.clear();
  EXPECT_EQ(show("fan", kConnectModeInBand), 1);
  EXPECT_THAT(fakes::journal(),
              ElementsAre(kEnteringItem, "call ConnectInfo::Getinstance()",
                          "call ConnectInfo::GetCimConnectInfo(list of 0)",
                          "call ConnectInfo::Getinstance()"));
}

TEST_F(ShowSystemItem, FailedTargetListGivesTheParsedCode) {
  fakes::script().cimError = static_cast<ConnectionErr>(4);
  fakes::script().parsedError = {12, ""};
  EXPECT_EQ(show("fan", kConnectModeOutOfBand), 12);
  EXPECT_THAT(fakes::journal(),
              ElementsAre(kEnteringItem, "call ConnectInfo::Getinstance()",
                          "call ConnectInfo::GetCimConnectInfo(list of 0)",
                          "call ConnectInfo::Getinstance()",
                          "call ConnectInfo::ParseCimError(4)",
                          "log 1: Authentication failed.",
                          "err Brivel failed to show system information.",
                          "log 1: Brivel failed to show system information."));
}

TEST_F(ShowSystemItem, EmptyTargetListIsAFailureWithErrorZero) {
  fakes::script().cimTargets.clear();
  fakes::script().parsedError = {0x1000D, ""};
  EXPECT_EQ(show("fan", kConnectModeInBand), 13);
  EXPECT_THAT(fakes::noted(Kind::kCall),
              Contains("ConnectInfo::ParseCimError(0)"));
  EXPECT_EQ(errors(), "Brivel failed to show system information.\n");
}

TEST_F(ShowSystemItem, TargetListFailureComesBeforeAnUnsupportedMode) {
  fakes::script().cimTargets.clear();
  fakes::script().parsedError = {13, ""};
  EXPECT_EQ(show("fan", kConnectModeEsxi), 13);
}

TEST_F(ShowSystemItem, OtherModesAreNotSupported) {
  for (const std::int32_t mode : {kConnectModeEsxi + 0, 0, 3, -1}) {
    fakes::clearJournal();
    EXPECT_EQ(show("fan", mode), 25);
    EXPECT_THAT(
        fakes::journal(),
        ElementsAre(kEnteringItem, "call ConnectInfo::Getinstance()",
                    "call ConnectInfo::GetCimConnectInfo(list of 0)", "err ",
                    "log 1: ", "err Brivel failed to show system items.",
                    "log 1: Brivel failed to show system items.", kExitingItem,
                    "err Function not supported on target system.",
                    "log 1: Function not supported on target system."));
  }
}

TEST_F(ShowSystemItem, FailedGetterEndsInItsOrder) {
  fakes::script().targets["a"].readStatus = -3;
  EXPECT_EQ(show("dimm", kConnectModeOutOfBand), 10);
  std::vector<std::string> end = fakes::journal();
  end.erase(end.begin(), end.begin() + 3);
  EXPECT_THAT(
      end,
      ElementsAre(
          "log 4: Entering  SystemHealth::getSystemItems", "call DevHealth(a)",
          "call DevHealth::get_DIMMs(list of 0)", "call ~DevHealth()", "err ",
          "log 1: ", "err Brivel failed to show dimm information.",
          "log 1: Brivel failed to show dimm information.", kExitingItem,
          "err Failed to read file.", "log 1: Failed to read file."));
  EXPECT_EQ(output(), "");
}

TEST_F(ShowSystemItem, FailedGetterGivesTheResultOfItsStatus) {
  const std::vector<std::pair<int, int>> results = {
      {-1, 13}, {-2, 13}, {-3, 10}, {-4, 25}, {-5, 17}, {1, 17}};
  for (const auto& [status, result] : results) {
    fakes::script().targets["a"].readStatus = status;
    EXPECT_EQ(show("fan", kConnectModeOutOfBand), result) << status;
    EXPECT_EQ(show("fan", kConnectModeInBand), result) << status;
  }
}

TEST_F(ShowSystemItem, InBandStopsAtTheFirstFailure) {
  fakes::script().cimTargets.push_back(target("c", 2));
  fakes::script().targets["b"].readStatus = -1;
  EXPECT_EQ(show("fan", kConnectModeInBand), 13);
  EXPECT_THAT(targetsRead(), ElementsAre("a", "b"));
  EXPECT_EQ(output(),
            "\n"
            "Fan:\n"
            "                     Name             Desired Speed Health state\n"
            "                 fan of a                           \n");
  EXPECT_EQ(errors(),
            "\nBrivel failed to show fan information.\nConnection failed.\n");
}

TEST_F(ShowSystemItem, UnknownItemIsNotSupportedInBothModes) {
  EXPECT_EQ(show("Fan", kConnectModeInBand), 25);
  EXPECT_EQ(show("Fan", kConnectModeOutOfBand), 25);
  const std::string failure =
      "\nBrivel failed to show Fan information.\n"
      "Function not supported on target system.\n";
  EXPECT_EQ(errors(), failure + failure);
  EXPECT_EQ(output(), "");
}

TEST_F(ShowSystemItem, ItemNameIsPrintedAsItStands) {
  show(" dimm", kConnectModeOutOfBand);
  show("", kConnectModeOutOfBand);
  show("%1%", kConnectModeOutOfBand);
  EXPECT_EQ(errors(),
            "\nBrivel failed to show  dimm information.\n"
            "Function not supported on target system.\n"
            "\nBrivel failed to show  information.\n"
            "Function not supported on target system.\n"
            "\nBrivel failed to show %1% information.\n"
            "Function not supported on target system.\n");
}

TEST_F(ShowSystemItem, EmptyListIsASuccess) {
  fakes::script().targets["a"].fans.clear();
  EXPECT_EQ(show("fan", kConnectModeOutOfBand), 0);
  EXPECT_EQ(
      output(),
      "\n"
      "Fan:\n"
      "                     Name             Desired Speed Health state\n");
}

TEST_F(ShowSystemItem, NodeIsReadAfreshOnEachCall) {
  giveNode(1);
  show("fan", kConnectModeInBand);
  giveNode(2);
  show("fan", kConnectModeInBand);
  EXPECT_THAT(targetsRead(), ElementsAre("a", "b"));
}

TEST_F(ShowSystemItem, ExceptionLeavesNoExitTrace) {
  fakes::script().throwingCall = "ConnectInfo::GetCimConnectInfo(list of 0)";
  EXPECT_THROW(show("fan", kConnectModeInBand), std::runtime_error);
  EXPECT_THAT(fakes::journal(),
              ElementsAre(kEnteringItem, "call ConnectInfo::Getinstance()",
                          "call ConnectInfo::GetCimConnectInfo(list of 0)"));
}

}  // namespace
