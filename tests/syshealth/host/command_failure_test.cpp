#include "syshealth/host/command_failure.h"

#include <gmock/gmock.h>

#include "tests/fakes/suite_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kLine = "Brivel failed to show something.";

class CommandFailure : public fakes::SuiteTest {};

TEST_F(CommandFailure, MissingServiceWritesNothing) {
  EXPECT_EQ(failMissingService(), 1);
  EXPECT_THAT(fakes::journal(), IsEmpty());
}

TEST_F(CommandFailure, CodeIsLoggedBeforeTheFailureLineIsPrinted) {
  EXPECT_EQ(failWithCode(12, kLine), 12);
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 1: Authentication failed.",
                          "err Brivel failed to show something.",
                          "log 1: Brivel failed to show something."));
}

TEST_F(CommandFailure, CodeKeepsAll32Bits) {
  EXPECT_EQ(failWithCode(0x180070, kLine), 0x180070);
  EXPECT_EQ(fakes::logRecords().at(0).text, "There are no containers.");
}

TEST_F(CommandFailure, MessageIsNotLoggedAtThresholdZero) {
  fakes::script().logThreshold = 0;
  EXPECT_EQ(failWithCode(12, kLine), 12);
  EXPECT_THAT(fakes::journal(),
              ElementsAre("err Brivel failed to show something.",
                          "log 1: Brivel failed to show something."));
}

TEST_F(CommandFailure, ConnectionAndNotSupportedHaveTheirCodes) {
  EXPECT_EQ(failConnection(kLine), 13);
  EXPECT_EQ(failNotSupported(kLine), 25);
  EXPECT_EQ(fakes::logRecords().at(0).text, "Connection failed.");
  EXPECT_EQ(fakes::logRecords().at(2).text,
            "Function not supported on target system.");
}

TEST_F(CommandFailure, TargetListReadsTheParsedCode) {
  fakes::script().parsedError = {18, "not read"};
  EXPECT_EQ(failTargetList(static_cast<ConnectionErr>(7), kLine), 18);
  EXPECT_THAT(
      fakes::journal(),
      ElementsAre("call ConnectInfo::Getinstance()",
                  "call ConnectInfo::ParseCimError(7)", "log 1: Timeout.",
                  "err Brivel failed to show something.",
                  "log 1: Brivel failed to show something."));
}

TEST_F(CommandFailure, TargetListReads16BitsOfTheParsedCode) {
  fakes::script().parsedError = {0x1006A, ""};
  EXPECT_EQ(failTargetList(kConnectionErrNone, kLine), 0x006A);
  EXPECT_EQ(fakes::logRecords().at(0).text, "Unknow error");
}

TEST_F(CommandFailure, TargetListReadsTheParsedCodeUnsigned) {
  fakes::script().parsedError = {-1, ""};
  EXPECT_EQ(failTargetList(kConnectionErrNone, kLine), 0xFFFF);
  EXPECT_EQ(fakes::logRecords().at(0).text, "Unknown error");
}

TEST_F(CommandFailure, TargetListTakesZeroAsItIs) {
  EXPECT_EQ(failTargetList(kConnectionErrNone, kLine), 0);
  EXPECT_EQ(fakes::logRecords().at(0).text, "Success.");
  EXPECT_EQ(errors(), "Brivel failed to show something.\n");
}

TEST_F(CommandFailure, TargetListWithoutServiceWritesNothing) {
  fakes::script().settingsFetches = 0;
  EXPECT_EQ(failTargetList(static_cast<ConnectionErr>(7), kLine), 1);
  EXPECT_THAT(fakes::journal(), ElementsAre("call ConnectInfo::Getinstance()"));
}

TEST_F(CommandFailure, InvalidNodePrintsAnEmptyLineAndTheReason) {
  EXPECT_EQ(failInvalidNode(), 1);
  EXPECT_EQ(errors(), "\nThe input node is invalid \n");
  EXPECT_THAT(fakes::journal(),
              ElementsAre("err ", "log 1: ", "err The input node is invalid ",
                          "log 1: The input node is invalid "));
}

TEST_F(CommandFailure, FailedReadTracesTheExitBeforeTheMessage) {
  EXPECT_EQ(failRead(-3, kLine, "SystemHealth::operation"), 10);
  EXPECT_THAT(
      fakes::journal(),
      ElementsAre("err ", "log 1: ", "err Brivel failed to show something.",
                  "log 1: Brivel failed to show something.",
                  "log 4: Exiting  SystemHealth::operation",
                  "err Failed to read file.", "log 1: Failed to read file."));
}

}  // namespace
