#include "syshealth/host/console_line.h"

#include <gmock/gmock.h>

#include "tests/fakes/suite_test.h"

namespace {

using testing::ElementsAre;

class ConsoleLineTest : public fakes::SuiteTest {};

TEST_F(ConsoleLineTest, Level1GoesToStandardError) {
  ConsoleLine(1, "file", 7).Stream() << "failed " << 3;
  EXPECT_EQ(errors(), "failed 3\n");
  EXPECT_EQ(output(), "");
}

TEST_F(ConsoleLineTest, Level3GoesToStandardOutput) {
  ConsoleLine(3, "file", 7).Stream() << "report " << 3;
  EXPECT_EQ(output(), "report 3\n");
  EXPECT_EQ(errors(), "");
}

TEST_F(ConsoleLineTest, Level0GoesToStandardErrorAndLevel2ToStandardOutput) {
  ConsoleLine(0, "file", 7).Stream() << "zero";
  ConsoleLine(2, "file", 7).Stream() << "two";
  EXPECT_EQ(errors(), "zero\n");
  EXPECT_EQ(output(), "two\n");
}

TEST_F(ConsoleLineTest, FlushesTheConsoleBeforeTheLogLineIsEmitted) {
  ConsoleLine(3, "file", 7).Stream() << "report";
  ConsoleLine(1, "file", 7).Stream() << "failure";
  EXPECT_THAT(fakes::journal(), ElementsAre("out report", "log 3: report",
                                            "err failure", "log 1: failure"));
}

TEST_F(ConsoleLineTest, IsWrittenAndLoggedAtAnyThreshold) {
  fakes::script().logThreshold = 0;
  ConsoleLine(3, "file", 7).Stream() << "report";
  ConsoleLine(1, "file", 7).Stream() << "failure";
  EXPECT_THAT(fakes::journal(), ElementsAre("out report", "log 3: report",
                                            "err failure", "log 1: failure"));
  EXPECT_EQ(fakes::thresholdReads(), 0);
}

TEST_F(ConsoleLineTest, EmptyTextIsAnEmptyLine) {
  ConsoleLine(1, "file", 7).Stream() << "";
  EXPECT_EQ(errors(), "\n");
  EXPECT_THAT(fakes::journal(), ElementsAre("err ", "log 1: "));
}

TEST_F(ConsoleLineTest, HandsLevelFileAndLineToTheLog) {
  ConsoleLine(3, "file", 7).Stream() << "report";
  const fakes::LogRecord& record = fakes::logRecords().at(0);
  EXPECT_EQ(record.level, 3U);
  EXPECT_EQ(record.file, "file");
  EXPECT_EQ(record.line, 7);
  EXPECT_EQ(record.text, "report");
}

TEST_F(ConsoleLineTest, WritesTextsAsTheyStand) {
  const std::string text = std::string("a\0b", 3) + " %1% \xff \n c";
  ConsoleLine(3, "file", 7).Stream() << text;
  EXPECT_EQ(output(), text + '\n');
  EXPECT_EQ(fakes::logRecords().at(0).text, text);
}

class PrintLine : public fakes::SuiteTest {};

TEST_F(PrintLine, ReportIsLevel3OfTheCallersLine) {
  printReport("report");
  const int here = __LINE__;
  EXPECT_EQ(output(), "report\n");
  const fakes::LogRecord& record = fakes::logRecords().at(0);
  EXPECT_EQ(record.level, 3U);
  EXPECT_EQ(record.file,
            "..\\..\\..\\..\\..\\Src\\Misc\\SystemHealth\\SystemHealth");
  EXPECT_EQ(record.line, here - 1);
}

TEST_F(PrintLine, ErrorIsLevel1OfTheCallersLine) {
  printError("failure");
  const int here = __LINE__;
  EXPECT_EQ(errors(), "failure\n");
  const fakes::LogRecord& record = fakes::logRecords().at(0);
  EXPECT_EQ(record.level, 1U);
  EXPECT_EQ(record.file,
            "..\\..\\..\\..\\..\\Src\\Misc\\SystemHealth\\SystemHealth");
  EXPECT_EQ(record.line, here - 1);
}

}  // namespace
