#include "suite/base/ascii.h"

#include <gtest/gtest.h>

namespace {

TEST(LowerCase, ChangesLettersOfAsciiAlone) {
  EXPECT_EQ(base::lowerCase("4C4C-Az\xC3\x84"), "4c4c-az\xC3\x84");
}

TEST(EqualIgnoringCase, ComparesWholeTexts) {
  EXPECT_TRUE(base::equalIgnoringCase("X-Auth-Token", "x-auth-token"));
  EXPECT_FALSE(base::equalIgnoringCase("X-Auth", "x-auth-token"));
  EXPECT_FALSE(base::equalIgnoringCase("[", "{"));
}

TEST(StartsIgnoringCase, NeedsTheWholeStart) {
  EXPECT_TRUE(base::startsIgnoringCase("HTTPS://host", "https"));
  EXPECT_FALSE(base::startsIgnoringCase("http", "https"));
}

TEST(Trimmed, TakesBlanksOffBothEnds) {
  EXPECT_EQ(base::trimmed(" \ta b\r\n"), "a b");
  EXPECT_EQ(base::trimmed(" \t"), "");
}

}  // namespace
