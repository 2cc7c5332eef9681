#include "suite/base/host_name.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using base::isHostName;

TEST(IsHostName, TakesNamesAndIpv4Addresses) {
  EXPECT_TRUE(isHostName("rack1-n3"));
  EXPECT_TRUE(isHostName("bmc_7.example.net"));
  EXPECT_TRUE(isHostName("10.0.0.5"));
}

TEST(IsHostName, DigitsAndDotsMustBeAnAddress) {
  EXPECT_FALSE(isHostName("10.0.0"));
  EXPECT_FALSE(isHostName("10.0.0.256"));
  EXPECT_FALSE(isHostName("1234"));
}

TEST(IsHostName, RefusesOtherCharactersAndEmptyLabels) {
  EXPECT_FALSE(isHostName(""));
  EXPECT_FALSE(isHostName("-host"));
  EXPECT_FALSE(isHostName(".host"));
  EXPECT_FALSE(isHostName("a..b"));
  EXPECT_FALSE(isHostName("a b"));
  EXPECT_FALSE(isHostName("fe80::1"));
}

TEST(IsHostName, HasALimit) {
  EXPECT_TRUE(isHostName(std::string(base::kLongestHostName, 'a')));
  EXPECT_FALSE(isHostName(std::string(base::kLongestHostName + 1, 'a')));
}

TEST(IsIpv6Address, NeedsAWholeAddress) {
  EXPECT_TRUE(base::isIpv6Address("fe80::1"));
  EXPECT_FALSE(base::isIpv6Address("fe80:::1"));
  EXPECT_FALSE(base::isIpv6Address("fe80::1%eth0"));
}

TEST(IsLinkLocal, LooksAtTheStart) {
  EXPECT_TRUE(base::isLinkLocal("fe80::1%eth0"));
  EXPECT_TRUE(base::isLinkLocal("FE80::1"));
  EXPECT_FALSE(base::isLinkLocal("2001:db8::1"));
  EXPECT_FALSE(base::isLinkLocal("fe80-host"));
}

TEST(Bracketed, PutsIpv6InBrackets) {
  EXPECT_EQ(base::bracketed("fe80::1"), "[fe80::1]");
  EXPECT_EQ(base::bracketed("10.0.0.5"), "10.0.0.5");
}

}  // namespace
