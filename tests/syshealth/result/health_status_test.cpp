#include "syshealth/result/health_status.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/fakes/suite_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HealthStatusToResult : public fakes::SuiteTest {};

TEST_F(HealthStatusToResult, SuccessIsSilent) {
  EXPECT_EQ(healthStatusToResult(0), 0);
  EXPECT_THAT(fakes::journal(), IsEmpty());
}

TEST_F(HealthStatusToResult, NoConnectionIsConnectionFailed) {
  EXPECT_EQ(healthStatusToResult(-1), 13);
  EXPECT_EQ(errors(), "Connection failed.\n");
}

TEST_F(HealthStatusToResult, RefusalIsConnectionFailed) {
  EXPECT_EQ(healthStatusToResult(-2), 13);
  EXPECT_THAT(fakes::journal(), ElementsAre("err Connection failed.",
                                            "log 1: Connection failed."));
}

TEST_F(HealthStatusToResult, FailedReadIsReadFileFailed) {
  EXPECT_EQ(healthStatusToResult(-3), 10);
  EXPECT_THAT(fakes::journal(), ElementsAre("err Failed to read file.",
                                            "log 1: Failed to read file."));
}

TEST_F(HealthStatusToResult, UnsupportedIsNotSupported) {
  EXPECT_EQ(healthStatusToResult(-4), 25);
  EXPECT_THAT(fakes::journal(),
              ElementsAre("err Function not supported on target system.",
                          "log 1: Function not supported on target system."));
}

TEST_F(HealthStatusToResult, PositiveStatusIsInternalError) {
  EXPECT_EQ(healthStatusToResult(1), 17);
  EXPECT_EQ(healthStatusToResult(std::numeric_limits<int>::max()), 17);
  EXPECT_EQ(errors(), "Internal error.\nInternal error.\n");
}

TEST_F(HealthStatusToResult, StatusBelowTheListIsInternalError) {
  EXPECT_EQ(healthStatusToResult(-5), 17);
  EXPECT_EQ(healthStatusToResult(std::numeric_limits<int>::min()), 17);
  EXPECT_EQ(errors(), "Internal error.\nInternal error.\n");
}

TEST_F(HealthStatusToResult, NothingReachesStandardOutput) {
  healthStatusToResult(-1);
  EXPECT_EQ(output(), "");
}

TEST_F(HealthStatusToResult, MessageIsPrintedWhateverTheLogsThreshold) {
  fakes::script().logThreshold = 0;
  healthStatusToResult(-3);
  EXPECT_EQ(errors(), "Failed to read file.\n");
}

}  // namespace
