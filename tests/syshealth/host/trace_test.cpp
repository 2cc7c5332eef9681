#include "syshealth/host/trace.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/fakes/suite_test.h"

namespace {

using fakes::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

class Trace : public fakes::SuiteTest {};

TEST_F(Trace, EntryIsTwoBlanksAndTheName) {
  traceEntering("SystemHealth::showCmd");
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::showCmd"));
}

TEST_F(Trace, ExitIsTwoBlanksAndTheName) {
  traceExiting("SystemHealth::showCmd");
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Exiting  SystemHealth::showCmd"));
}

TEST_F(Trace, IsNotWrittenBelowLevel4) {
  fakes::script().logThreshold = 3;
  traceEntering("SystemHealth::showCmd");
  traceExiting("SystemHealth::showCmd");
  EXPECT_THAT(fakes::journal(), IsEmpty());
}

TEST_F(Trace, CostsOneReadOfTheThresholdWhenOff) {
  fakes::script().logThreshold = 3;
  traceEntering("SystemHealth::showCmd");
  EXPECT_EQ(fakes::thresholdReads(), 1);
}

TEST_F(Trace, IsTaggedWithTheApplicationsFile) {
  traceEntering("SystemHealth::showCmd");
  EXPECT_EQ(fakes::logRecords().at(0).file,
            "..\\..\\..\\..\\..\\Src\\Misc\\SystemHealth\\SystemHealth");
}

TEST_F(Trace, IsTaggedWithTheLineThatCallsIt) {
  traceEntering("first");
  traceExiting("second");
  const int here = __LINE__;
  EXPECT_EQ(fakes::logRecords().at(0).line, here - 2);
  EXPECT_EQ(fakes::logRecords().at(1).line, here - 1);
}

class PlainLine : public fakes::SuiteTest {
 protected:
  // A text whose making leaves a mark.
  static std::string computed() {
    fakes::note(Kind::kCall, "computed");
    return "text";
  }
};

TEST_F(PlainLine, IsWrittenAtItsOwnLevel) {
  fakes::script().logThreshold = 3;
  SYSHEALTH_LOG(kLogInformation) << computed() << ' ' << 42;
  EXPECT_THAT(fakes::journal(), ElementsAre("call computed", "log 3: text 42"));
}

TEST_F(PlainLine, ComputesNothingBelowItsLevel) {
  fakes::script().logThreshold = 2;
  SYSHEALTH_LOG(kLogInformation) << computed();
  EXPECT_THAT(fakes::journal(), IsEmpty());
}

TEST_F(PlainLine, ErrorIsWrittenUnlessTheThresholdIsZero) {
  fakes::script().logThreshold = 1;
  SYSHEALTH_LOG(kLogError) << "error";
  fakes::script().logThreshold = 0;
  SYSHEALTH_LOG(kLogError) << "nobody sees this";
  EXPECT_THAT(fakes::journal(), ElementsAre("log 1: error"));
}

TEST_F(PlainLine, ThresholdIsComparedUnsigned) {
  fakes::script().logThreshold = std::numeric_limits<unsigned int>::max();
  SYSHEALTH_LOG(kLogTrace) << "trace";
  EXPECT_THAT(fakes::journal(), ElementsAre("log 4: trace"));
}

TEST_F(PlainLine, ReadsTheThresholdAfreshForEveryLine) {
  SYSHEALTH_LOG(kLogInformation) << "seen";
  fakes::script().logThreshold = 0;
  SYSHEALTH_LOG(kLogInformation) << "not seen";
  fakes::script().logThreshold = 4;
  SYSHEALTH_LOG(kLogInformation) << "seen again";
  EXPECT_EQ(fakes::thresholdReads(), 3);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              ElementsAre("3: seen", "3: seen again"));
}

TEST_F(PlainLine, IsTaggedWithFileAndLine) {
  SYSHEALTH_LOG(kLogError) << "error";
  const int here = __LINE__;
  EXPECT_EQ(fakes::logRecords().at(0).file,
            "..\\..\\..\\..\\..\\Src\\Misc\\SystemHealth\\SystemHealth");
  EXPECT_EQ(fakes::logRecords().at(0).line, here - 1);
}

TEST_F(PlainLine, DoesNotReachTheConsole) {
  SYSHEALTH_LOG(kLogError) << "error";
  SYSHEALTH_LOG(kLogInformation) << "information";
  EXPECT_EQ(output(), "");
  EXPECT_EQ(errors(), "");
}

}  // namespace
