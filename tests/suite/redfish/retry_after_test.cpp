#include "suite/redfish/session/retry_after.h"

#include <gtest/gtest.h>

namespace {

using redfish::retryDelay;
using std::chrono::milliseconds;

// Sun, 06 Nov 1994 08:49:37 GMT
const auto kNow = std::chrono::system_clock::from_time_t(784111777);

TEST(RetryDelay, SecondsAreTakenAsTheyStand) {
  EXPECT_EQ(retryDelay("7", 0, kNow), milliseconds(7000));
}

TEST(RetryDelay, NeverShorterThanASecondNorLongerThanThirty) {
  EXPECT_EQ(retryDelay("0", 0, kNow), milliseconds(1000));
  EXPECT_EQ(retryDelay("86400", 0, kNow), milliseconds(30000));
  EXPECT_EQ(retryDelay("99999999999999999999999999", 0, kNow),
            milliseconds(30000));
}

TEST(RetryDelay, DateIsWaitedFor) {
  EXPECT_EQ(retryDelay("Sun, 06 Nov 1994 08:49:42 GMT", 0, kNow),
            milliseconds(5000));
}

TEST(RetryDelay, DateOfThePastIsASecond) {
  EXPECT_EQ(retryDelay("Sun, 06 Nov 1994 08:00:00 GMT", 0, kNow),
            milliseconds(1000));
}

TEST(RetryDelay, FarDateIsCut) {
  EXPECT_EQ(retryDelay("Fri, 06 Nov 2099 08:00:00 GMT", 0, kNow),
            milliseconds(30000));
}

TEST(RetryDelay, DateBeyondTheClockIsCut) {
  EXPECT_EQ(retryDelay("Fri, 31 Dec 9999 23:59:59 GMT", 0, kNow),
            milliseconds(30000));
  EXPECT_EQ(retryDelay("Sat, 01 Jan 1600 00:00:00 GMT", 0, kNow),
            milliseconds(1000));
}

TEST(RetryDelay, WithoutHeaderItDoubles) {
  EXPECT_EQ(retryDelay("", 0, kNow), milliseconds(1000));
  EXPECT_EQ(retryDelay("", 1, kNow), milliseconds(2000));
  EXPECT_EQ(retryDelay("soon", 2, kNow), milliseconds(4000));
}

}  // namespace
