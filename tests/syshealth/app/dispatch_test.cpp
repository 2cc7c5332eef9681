#include <gmock/gmock.h>

#include <stdexcept>

#include "syshealth/app/system_health.h"
#include "tests/fakes/suite_test.h"

namespace {

using fakes::Kind;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class ShowCmd : public fakes::SuiteTest {
 protected:
  ShowCmd() {
    fakes::script().ipmiTargets = {target("a")};
    fakes::script().cimTargets = {target("a")};
    fakes::clearJournal();
  }

  // The items that were tried, in order, as the failure lines name them: with
  // an unsupported getter, every item fails under its name.
  std::vector<std::string> itemsTried(const std::string& device) {
    giveDevice(device);
    fakes::script().targets["a"].readStatus = -4;
    fakes::clearJournal();
    application.showCmd();
    const std::string before = "Brivel failed to show ";
    const std::string after = " information.";
    std::vector<std::string> items;
    for (const std::string& line : fakes::noted(Kind::kError)) {
      if (line.rfind(before, 0) == 0) {
        items.push_back(line.substr(
            before.size(), line.size() - before.size() - after.size()));
      }
    }
    return items;
  }

  SystemHealth application;
};

TEST_F(ShowCmd, WithoutDeviceShowsTheSummaryOnceAfterItsOwnExitTrace) {
  EXPECT_EQ(application.showCmd(), 0);
  std::vector<std::string> begin = fakes::journal();
  begin.resize(8);
  EXPECT_THAT(
      begin,
      ElementsAre(
          "log 4: Entering  SystemHealth::showCmd",
          "call ConnectInfo::Getinstance()", "call ConnectInfo::GetConMode()",
          "log 3: The connection mode is 2; InBand:1 OOB:2 ESXI:4",
          "call ArgParser::GetInstance()", "call ArgParser::GetValue(device)",
          "log 4: Exiting  SystemHealth::showCmd",
          "log 4: Entering  SystemHealth::showHealthSummary"));
  EXPECT_THAT(
      fakes::noted(Kind::kLog),
      Contains("4: Entering  SystemHealth::showHealthSummary").Times(1));
  EXPECT_THAT(fakes::noted(Kind::kLog),
              Contains("4: Exiting  SystemHealth::showCmd").Times(1));
}

TEST_F(ShowCmd, WithoutDeviceNeverAsksForItsText) {
  application.showCmd();
  EXPECT_THAT(fakes::noted(Kind::kCall),
              Not(Contains("ArgParser::GetValue(device, text \"\")")));
}

TEST_F(ShowCmd, WithoutDeviceGivesTheSummarysResult) {
  fakes::script().reachability = 12;
  EXPECT_EQ(application.showCmd(), 12);
}

TEST_F(ShowCmd, HandsTheModeToTheSummary) {
  fakes::script().mode = kConnectModeEsxi;
  EXPECT_EQ(application.showCmd(), 25);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              Contains("3: The connection mode is 4; InBand:1 OOB:2 ESXI:4"));
}

TEST_F(ShowCmd, ModeIsLoggedAndTracesAreNotAtThreshold3) {
  fakes::script().logThreshold = 3;
  fakes::script().mode = kConnectModeInBand;
  giveDevice("fan");
  application.showCmd();
  std::vector<std::string> log = fakes::noted(Kind::kLog);
  EXPECT_EQ(log.at(0), "3: The connection mode is 1; InBand:1 OOB:2 ESXI:4");
  for (const std::string& line : log) {
    EXPECT_EQ(line.find("Entering  "), std::string::npos);
    EXPECT_EQ(line.find("Exiting  "), std::string::npos);
  }
}

TEST_F(ShowCmd, AtThresholdZeroOnlyConsoleLinesAreBuilt) {
  fakes::script().logThreshold = 0;
  giveDevice("fan");
  EXPECT_EQ(application.showCmd(), 0);
  std::string logged;
  for (const fakes::LogRecord& record : fakes::logRecords()) {
    logged += record.text + '\n';
  }
  EXPECT_EQ(logged, output());
  EXPECT_NE(output(), "");
}

TEST_F(ShowCmd, MissingSettingsServiceIsLoggedAndReadsNoOption) {
  fakes::script().settingsFetches = 0;
  giveDevice("fan");
  EXPECT_EQ(application.showCmd(), 1);
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::showCmd",
                          "call ConnectInfo::Getinstance()",
                          "log 1: The ConnectInfo::Getinstance return NULL"));
}

TEST_F(ShowCmd, MissingParserWritesNothing) {
  fakes::script().parserFetches = 0;
  EXPECT_EQ(application.showCmd(), 1);
  EXPECT_THAT(
      fakes::journal(),
      ElementsAre("log 4: Entering  SystemHealth::showCmd",
                  "call ConnectInfo::Getinstance()",
                  "call ConnectInfo::GetConMode()",
                  "log 3: The connection mode is 2; InBand:1 OOB:2 ESXI:4",
                  "call ArgParser::GetInstance()"));
}

TEST_F(ShowCmd, DeviceIsFetchedIntoAnEmptyText) {
  giveDevice("fan");
  EXPECT_EQ(application.showCmd(), 0);
  std::vector<std::string> begin = fakes::noted(Kind::kCall);
  begin.resize(6);
  EXPECT_THAT(
      begin,
      ElementsAre("ConnectInfo::Getinstance()", "ConnectInfo::GetConMode()",
                  "ArgParser::GetInstance()", "ArgParser::GetValue(device)",
                  "ArgParser::GetValue(device, text \"\")",
                  "ConnectInfo::Getinstance()"));
}

TEST_F(ShowCmd, WithDeviceTracesItsExitLast) {
  giveDevice("fan");
  application.showCmd();
  EXPECT_EQ(fakes::journal().back(), "log 4: Exiting  SystemHealth::showCmd");
  EXPECT_THAT(fakes::noted(Kind::kLog),
              Contains("4: Exiting  SystemHealth::showCmd").Times(1));
}

TEST_F(ShowCmd, AllIsTheSixItemsInOrder) {
  EXPECT_THAT(itemsTried("all"), ElementsAre("system", "processor", "fan",
                                             "dimm", "power", "pci_adapter"));
}

TEST_F(ShowCmd, AllIsCaseSensitive) {
  EXPECT_THAT(itemsTried("All"), ElementsAre("All"));
}

TEST_F(ShowCmd, AllIsExpandedOnlyAlone) {
  EXPECT_THAT(itemsTried("all,"), ElementsAre("all", ""));
  EXPECT_THAT(itemsTried(" all"), ElementsAre(" all"));
  EXPECT_THAT(itemsTried("fan,all"), ElementsAre("fan", "all"));
}

TEST_F(ShowCmd, EmptyDeviceIsOneEmptyItem) {
  EXPECT_THAT(itemsTried(""), ElementsAre(""));
}

TEST_F(ShowCmd, DeviceThatCannotBeFetchedIsOneEmptyItem) {
  fakes::script().present["device"] = true;
  EXPECT_EQ(application.showCmd(), 25);
  EXPECT_EQ(errors(),
            "\nBrivel failed to show  information.\n"
            "Function not supported on target system.\n");
}

TEST_F(ShowCmd, RepeatedItemsAreKept) {
  EXPECT_THAT(itemsTried("fan,fan"), ElementsAre("fan", "fan"));
}

TEST_F(ShowCmd, ItemsAreNotTrimmed) {
  EXPECT_THAT(itemsTried("fan, dimm"), ElementsAre("fan", " dimm"));
}

TEST_F(ShowCmd, EmptyItemsBetweenAndAfterCommasAreKept) {
  EXPECT_THAT(itemsTried("fan,,dimm,"), ElementsAre("fan", "", "dimm", ""));
  EXPECT_THAT(itemsTried(",fan"), ElementsAre("", "fan"));
}

TEST_F(ShowCmd, EveryItemSucceedingGivesZero) {
  giveDevice("fan,dimm,power");
  EXPECT_EQ(application.showCmd(), 0);
}

TEST_F(ShowCmd, OneFailingItemGivesItsCode) {
  giveDevice("fan,dimm");
  // The service is there for the dispatcher and the first item.
  fakes::script().settingsFetches = 2;
  EXPECT_EQ(application.showCmd(), 1);
}

TEST_F(ShowCmd, FailedItemsAreCombinedAndTheRestIsTried) {
  giveDevice("fan,bogus,dimm");
  fakes::script().mode = kConnectModeInBand;
  fakes::script().targets["a"].readStatus = -1;
  EXPECT_EQ(application.showCmd(), 13 | 25);
  EXPECT_EQ(errors(),
            "\nBrivel failed to show fan information.\nConnection failed.\n"
            "\nBrivel failed to show bogus information.\n"
            "Function not supported on target system.\n"
            "\nBrivel failed to show dimm information.\nConnection failed.\n");
}

TEST_F(ShowCmd, HandsTheModeToEveryItem) {
  giveDevice("fan,dimm");
  fakes::script().mode = kConnectModeEsxi;
  EXPECT_EQ(application.showCmd(), 25);
  const std::string failure =
      "\nBrivel failed to show system items.\n"
      "Function not supported on target system.\n";
  EXPECT_EQ(errors(), failure + failure);
}

TEST_F(ShowCmd, ItemsDoNotReadTheIpmiList) {
  giveDevice("all");
  application.showCmd();
  EXPECT_THAT(fakes::noted(Kind::kCall),
              Not(Contains("ConnectInfo::GetIpmiConnectInfo(list of 0)")));
}

TEST_F(ShowCmd, SummaryDoesNotReadTheCimList) {
  application.showCmd();
  EXPECT_THAT(fakes::noted(Kind::kCall),
              Not(Contains("ConnectInfo::GetCimConnectInfo(list of 0)")));
}

TEST_F(ShowCmd, ExceptionFromAnItemLeavesNoExitTrace) {
  giveDevice("fan,dimm");
  fakes::script().throwingCall = "DevHealth::get_fans(list of 0)";
  EXPECT_THROW(application.showCmd(), std::runtime_error);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              ElementsAre("4: Entering  SystemHealth::showCmd",
                          "3: The connection mode is 2; InBand:1 OOB:2 ESXI:4",
                          "4: Entering  SystemHealth::showSystemItem",
                          "4: Entering  SystemHealth::getSystemItems"));
}

}  // namespace
