#include "export/outcome.h"

#include <gtest/gtest.h>

namespace exporting {
namespace {

report::ServerReport report(report::ReadStatus status, int code = 0,
                            const std::string& what = "") {
  report::ServerReport report;
  report.target.name = "n1";
  report.read.status = status;
  if (code != 0) {
    report.read.failures = {{what, "/redfish/v1/X", code, "it broke"}};
  }
  return report;
}

using report::ReadStatus;

TEST(Outcome, SuccessIfAllWasRead) {
  Outcome outcome;
  outcome.add(report(ReadStatus::kComplete));
  EXPECT_EQ(outcome.result().code, 0);
  EXPECT_EQ(outcome.result().message, "");
}

TEST(Outcome, NoTargetIsSuccess) { EXPECT_EQ(Outcome().result().code, 0); }

TEST(Outcome, TheOnlyTargetSaysWhatIsMissing) {
  Outcome outcome;
  outcome.add(report(ReadStatus::kPartial, 27, "fan"));
  EXPECT_EQ(outcome.result().code, 27);
  EXPECT_EQ(outcome.result().message, "n1: fan: /redfish/v1/X: it broke");
}

TEST(Outcome, WhyTheOnlyTargetFailedIsLeftToTheHost) {
  Outcome outcome;
  outcome.add(report(ReadStatus::kFailed, 13));
  EXPECT_EQ(outcome.result().code, 13);
  EXPECT_EQ(outcome.result().message, "");
}

TEST(Outcome, SeveralTargetsAreCounted) {
  Outcome outcome;
  outcome.add(report(ReadStatus::kComplete));
  outcome.add(report(ReadStatus::kFailed, 13));
  outcome.add(report(ReadStatus::kPartial, 13, "fan"));
  EXPECT_EQ(outcome.result().code, 13);
  EXPECT_EQ(outcome.result().message,
            "1 of 3 targets could not be read, 1 of 3 not wholly; the first: "
            "n1: /redfish/v1/X: it broke");
}

TEST(Outcome, DifferentFailuresAreGeneric) {
  Outcome outcome;
  outcome.add(report(ReadStatus::kFailed, 13));
  outcome.add(report(ReadStatus::kFailed, 12));
  EXPECT_EQ(outcome.result().code, kGenericFailure);
}

}  // namespace
}  // namespace exporting
