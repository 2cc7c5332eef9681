#include <gmock/gmock.h>

#include <functional>

#include "syshealth/app/system_health.h"
#include "tests/fakes/suite_test.h"

// Every table byte for byte, trailing blanks included.

namespace {

using Tarvex::DeviceHealth::PCIAdapter;
using Tarvex::DeviceHealth::SystemBoard;

class ComponentReport : public fakes::SuiteTest {
 protected:
  ComponentReport() { fakes::clearJournal(); }

  SystemHealth application;
};

TEST_F(ComponentReport, SystemBoard) {
  application.showSystem({"rack-7", "9TX4/A1", "SN0001", "3f5c"});
  // clang-format off
  EXPECT_EQ(output(),
            "\n"
            "System Board:\n"
            "                  Machine Name   Machine Type/Model        Serial Number UUID \n"
            "                        rack-7              9TX4/A1               SN0001 3f5c \n");
  // clang-format on
}

TEST_F(ComponentReport, EmptySystemBoardStillHasItsRow) {
  application.showSystem(SystemBoard());
  const std::string blanks(30 + 1 + 20 + 1 + 20 + 1 + 0 + 1, ' ');
  // clang-format off
  EXPECT_EQ(output(),
            "\n"
            "System Board:\n"
            "                  Machine Name   Machine Type/Model        Serial Number UUID \n" +
                blanks + "\n");
  // clang-format on
}

TEST_F(ComponentReport, Processors) {
  application.showProcessors(
      {{"CPU1", "Quillon Q7", "2400", "3900", "OK"},
       {"CPU2", "Quillon Q7", "2400", "3900", "Warning"}});
  // clang-format off
  EXPECT_EQ(output(),
            "\n"
            "CPU:\n"
            "           Name                                   Family   Current Frequency (MHz) Max Turbo Frequency (MHz) Health state\n"
            "           CPU1                               Quillon Q7                      2400                      3900 OK\n"
            "           CPU2                               Quillon Q7                      2400                      3900 Warning\n");
  // clang-format on
}

TEST_F(ComponentReport, NoProcessorsLeaveHeadingAndHeader) {
  application.showProcessors({});
  // clang-format off
  EXPECT_EQ(output(),
            "\n"
            "CPU:\n"
            "           Name                                   Family   Current Frequency (MHz) Max Turbo Frequency (MHz) Health state\n");
  // clang-format on
}

TEST_F(ComponentReport, Fans) {
  application.showFans({{"Fan 1", "4200 RPM", "OK"}});
  EXPECT_EQ(output(),
            "\n"
            "Fan:\n"
            "                     Name             Desired Speed Health state\n"
            "                    Fan 1                  4200 RPM OK\n");
}

TEST_F(ComponentReport, NoFansLeaveHeadingAndHeader) {
  application.showFans({});
  EXPECT_EQ(
      output(),
      "\n"
      "Fan:\n"
      "                     Name             Desired Speed Health state\n");
}

TEST_F(ComponentReport, Dimms) {
  application.showDIMMs(
      {{"DIMM A1", "PN-1", "SER-1", "Fennmark", "DDR5", "4800 MHz"},
       {"DIMM A2", "PN-2", "SER-2", "Fennmark", "DDR4", "3200 MHz"}});
  // clang-format off
  EXPECT_EQ(output(),
            "\n"
            "DIMM:\n"
            "              Description               Part Number         FRU Serial Number Manufacturer \n"
            "                  DIMM A1                      PN-1                     SER-1 Fennmark \n"
            "                  DIMM A2                      PN-2                     SER-2 Fennmark \n"
            "\n"
            "                     Type Max Memory Speed \n"
            "                     DDR5 4800 MHz \n"
            "                     DDR4 3200 MHz \n");
  // clang-format on
}

TEST_F(ComponentReport, NoDimmsLeaveBothHeaders) {
  application.showDIMMs({});
  // clang-format off
  EXPECT_EQ(output(),
            "\n"
            "DIMM:\n"
            "              Description               Part Number         FRU Serial Number Manufacturer \n"
            "\n"
            "                     Type Max Memory Speed \n");
  // clang-format on
}

TEST_F(ComponentReport, Powers) {
  application.showPowers({{"PSU 1", "750 W", "OK"}});
  EXPECT_EQ(output(),
            "\n"
            "Power:\n"
            "                     Name        Total Output Power Health state\n"
            "                    PSU 1                     750 W OK\n");
}

TEST_F(ComponentReport, NoPowersLeaveHeadingAndHeader) {
  application.showPowers({});
  EXPECT_EQ(
      output(),
      "\n"
      "Power:\n"
      "                     Name        Total Output Power Health state\n");
}

TEST_F(ComponentReport, PciAdapters) {
  application.showPCIAdapters({{"Network adapter", "Slot 1", "Brightwater",
                                "BW-25", "S-9", "P-9", "F-9", "Enabled", ""}});
  // clang-format off
  EXPECT_EQ(output(),
            "\n"
            "PCI Adapter:\n"
            "                                              Name Tag \n"
            "                                   Network adapter Slot 1 \n"
            "\n"
            "   Manufacturer           Model    SerialNumber      PartNumber      FRU number OperationalStatus \n"
            "    Brightwater           BW-25             S-9             P-9             F-9 Enabled \n");
  // clang-format on
}

TEST_F(ComponentReport, NoPciAdaptersLeaveBothHeaders) {
  application.showPCIAdapters({});
  // clang-format off
  EXPECT_EQ(output(),
            "\n"
            "PCI Adapter:\n"
            "                                              Name Tag \n"
            "\n"
            "   Manufacturer           Model    SerialNumber      PartNumber      FRU number OperationalStatus \n");
  // clang-format on
}

TEST_F(ComponentReport, StatusDescriptionsAreNotPrinted) {
  PCIAdapter adapter;
  adapter.statusDescriptions = "hidden";
  application.showPCIAdapters({adapter});
  EXPECT_EQ(output().find("hidden"), std::string::npos);
}

TEST_F(ComponentReport, WideValueShiftsItsLineOnly) {
  application.showFans(
      {{"A fan with a name of forty characters...", "slow", "OK"},
       {"Fan 2", "fast", "OK"}});
  EXPECT_EQ(
      output(),
      "\n"
      "Fan:\n"
      "                     Name             Desired Speed Health state\n"
      "A fan with a name of forty characters...                      slow "
      "OK\n"
      "                    Fan 2                      fast OK\n");
}

TEST_F(ComponentReport, EmptyValuesAreBlanks) {
  application.showFans({{"", "", ""}});
  EXPECT_EQ(
      output(),
      "\n"
      "Fan:\n"
      "                     Name             Desired Speed Health state\n" +
          std::string(25 + 1 + 25 + 1, ' ') + "\n");
}

TEST_F(ComponentReport, HeaderIsFormattedAsARow) {
  application.showFans({{"Name", "Desired Speed", "Health state"}});
  const std::string header =
      "                     Name             Desired Speed Health state\n";
  EXPECT_EQ(output(), "\nFan:\n" + header + header);
}

TEST_F(ComponentReport, ValuesAreNotFormatPatterns) {
  application.showFans({{"%2%", "100 %", "%%"}});
  EXPECT_NE(output().find("                      %2%"
                          "                     100 % %%\n"),
            std::string::npos);
}

TEST_F(ComponentReport, EveryLineGoesToConsoleAndLogAtLevel3) {
  application.showDIMMs(
      {{"DIMM A1", "PN-1", "SER-1", "Fennmark", "DDR5", "4800 MHz"}});
  std::string logged;
  for (const fakes::LogRecord& record : fakes::logRecords()) {
    if (record.level == 3) {
      logged += record.text + '\n';
    }
  }
  EXPECT_EQ(logged, output());
  EXPECT_EQ(errors(), "");
}

TEST_F(ComponentReport, IsPrintedWhateverTheLogsThreshold) {
  fakes::script().logThreshold = 0;
  application.showFans({});
  EXPECT_EQ(
      output(),
      "\n"
      "Fan:\n"
      "                     Name             Desired Speed Health state\n");
}

TEST_F(ComponentReport, EachTracesEntryAndExitUnderItsName) {
  const std::vector<std::pair<std::string, std::function<void()>>> reports = {
      {"showSystem", [this] { application.showSystem({}); }},
      {"showProcessors", [this] { application.showProcessors({}); }},
      {"showFans", [this] { application.showFans({}); }},
      {"showDIMMs", [this] { application.showDIMMs({}); }},
      {"showPowers", [this] { application.showPowers({}); }},
      {"showPCIAdapters", [this] { application.showPCIAdapters({}); }}};
  for (const auto& [name, report] : reports) {
    fakes::clearJournal();
    report();
    EXPECT_EQ(fakes::journal().front(),
              "log 4: Entering  SystemHealth::" + name);
    EXPECT_EQ(fakes::journal().back(), "log 4: Exiting  SystemHealth::" + name);
  }
}

}  // namespace
