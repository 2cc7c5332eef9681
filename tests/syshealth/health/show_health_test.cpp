#include <gmock/gmock.h>

#include "syshealth/app/system_health.h"
#include "tests/fakes/suite_test.h"

namespace {

using Tarvex::DeviceHealth::Alert;
using testing::IsEmpty;
using testing::SizeIs;

class ShowHealth : public fakes::SuiteTest {
 protected:
  ShowHealth() { fakes::clearJournal(); }

  // The alerts as the summary hands them over, by ascending severity.
  void show(std::vector<Alert> alerts) { application.showHealth(alerts); }

  const AlertCategoryBucket& bucket(std::size_t index) const {
    return application.categoryBuckets.at(index);
  }

  SystemHealth application;
};

TEST_F(ShowHealth, NoAlertsLeaveEveryCategoryNormal) {
  show({});
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
  for (const AlertCategoryBucket& bucket : application.categoryBuckets) {
    EXPECT_EQ(bucket.status, 0);
    EXPECT_THAT(bucket.alerts, IsEmpty());
  }
}

TEST_F(ShowHealth, PrintsEventsByCategoryAndThenInTheirOrder) {
  show({{"", "M0", 0, "Memory", "all well"},
        {"", "C1", 1, "Cooling", "a fan is slow"},
        {"", "P1", 1, "Power", "one supply"},
        {"", "C2", 2, "Cooling", "a fan stands"}});
  EXPECT_EQ(output(),
            "\n"
            "==================================\n"
            "System                         Normal \n"
            "Processors                     Normal \n"
            "Cooling                        Error \n"
            "Memory                         Normal \n"
            "PCI                            Normal \n"
            "Power                          Warning \n"
            "Disks                          Normal \n"
            "Other                          Normal \n"
            "\n"
            "Active Events with Error/Warning:\n"
            "Message ID:                    C1 \n"
            "Level:                         Warning \n"
            "Message:                       a fan is slow \n"
            "\n"
            "Message ID:                    C2 \n"
            "Level:                         Error \n"
            "Message:                       a fan stands \n"
            "\n"
            "Message ID:                    M0 \n"
            "Level:                         Normal \n"
            "Message:                       all well \n"
            "\n"
            "Message ID:                    P1 \n"
            "Level:                         Warning \n"
            "Message:                       one supply \n"
            "\n");
}

TEST_F(ShowHealth, EveryLineGoesToConsoleAndLogAtLevel3) {
  show({{"", "M1", 1, "Memory", "weak"}});
  std::string logged;
  for (const fakes::LogRecord& record : fakes::logRecords()) {
    if (record.level == 3) {
      logged += record.text + '\n';
    }
  }
  EXPECT_EQ(logged, output());
  EXPECT_EQ(errors(), "");
}

TEST_F(ShowHealth, TracesEntryAndExit) {
  show({});
  EXPECT_EQ(fakes::journal().front(),
            "log 4: Entering  SystemHealth::showHealth");
  EXPECT_EQ(fakes::journal().back(),
            "log 4: Exiting  SystemHealth::showHealth");
}

TEST_F(ShowHealth, LastAlertOfACategorySetsItsStatus) {
  show({{"", "M1", 1, "Memory", ""}, {"", "M2", 2, "Memory", ""}});
  EXPECT_EQ(bucket(3).status, 2);
  EXPECT_THAT(bucket(3).alerts, SizeIs(2));
}

TEST_F(ShowHealth, PciAlertLandsInTheFifthBucket) {
  show({{"extra", "P1", 1, "PCI", "slot"}});
  ASSERT_THAT(bucket(4).alerts, SizeIs(1));
  EXPECT_EQ(bucket(4).alerts[0].extra, "extra");
  EXPECT_EQ(bucket(4).alerts[0].messageId, "P1");
  EXPECT_EQ(bucket(4).alerts[0].severity, 1);
  EXPECT_EQ(bucket(4).alerts[0].category, "PCI");
  EXPECT_EQ(bucket(4).alerts[0].message, "slot");
}

TEST_F(ShowHealth, AlertOfNoKnownCategoryIsDropped) {
  show({});
  const std::string empty = output();
  show({{"", "X1", 2, "memory", ""},
        {"", "X2", 2, "MEMORY", ""},
        {"", "X3", 2, "Memory ", ""},
        {"", "X4", 2, "Mem", ""},
        {"", "X5", 2, "", ""},
        {"", "X6", 2, "Fan", ""}});
  EXPECT_EQ(output(), empty + empty);
}

TEST_F(ShowHealth, LongMessageIsPrintedWhole) {
  const std::string message(200, 'm');
  show({{"", "X1", 1, "Other", message}});
  EXPECT_NE(output().find("Message:                       " + message + " \n"),
            std::string::npos);
}

TEST_F(ShowHealth, ValuesAreNotFormatPatterns) {
  show({{"", "%1%", 1, "Other", "at 100% of %2%"}});
  EXPECT_NE(output().find("Message ID:                    %1% \n"),
            std::string::npos);
  EXPECT_NE(output().find("Message:                       at 100% of %2% \n"),
            std::string::npos);
}

}  // namespace
