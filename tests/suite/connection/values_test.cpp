#include "suite/connection/settings/values.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <optional>
#include <string>

namespace {

using connection::isPin;
using connection::timeLimit;
using std::chrono::milliseconds;

const std::string kDigest = std::string(43, 'A') + "=";

TEST(TimeLimit, ReadsSeconds) {
  EXPECT_EQ(timeLimit("30"), milliseconds(30000));
  EXPECT_EQ(timeLimit("0.25"), milliseconds(250));
  EXPECT_EQ(timeLimit("86400"), milliseconds(86400000));
}

TEST(TimeLimit, RoundsUpToAMillisecond) {
  EXPECT_EQ(timeLimit("0.0001"), milliseconds(1));
}

TEST(TimeLimit, RefusesWhatIsNoLimit) {
  for (const char* text : {"0", "-1", "86401", "", "1s", "1e3", "nan", "inf",
                           " 1", "0x10", "1,5"}) {
    EXPECT_EQ(timeLimit(text), std::nullopt) << text;
  }
  EXPECT_EQ(timeLimit(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
  EXPECT_EQ(timeLimit(std::numeric_limits<double>::infinity()), std::nullopt);
}

TEST(IsPin, KnowsADigest) { EXPECT_TRUE(isPin("sha256//" + kDigest)); }

TEST(IsPin, KnowsSeveralDigests) {
  EXPECT_TRUE(isPin("sha256//" + kDigest + ";sha256//" + kDigest));
}

TEST(IsPin, RefusesAllElse) {
  EXPECT_FALSE(isPin(""));
  EXPECT_FALSE(isPin(kDigest));
  EXPECT_FALSE(isPin("sha1//" + kDigest));
  EXPECT_FALSE(isPin("sha256//"));
  EXPECT_FALSE(isPin("sha256//" + std::string(44, 'A')));
  EXPECT_FALSE(isPin("sha256//" + kDigest + ";"));
  EXPECT_FALSE(isPin("/etc/key.pem"));
}

}  // namespace
