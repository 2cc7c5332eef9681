#include "suite/brivel/result_line.h"

#include <gtest/gtest.h>

namespace {

using brivel::resultLine;

TEST(ResultLine, HoldsCodeMessageCauseAndLog) {
  EXPECT_EQ(
      resultLine({13, "", "10.0.0.5:443: refused", "check the address", false},
                 "/tmp/a.log"),
      "brivel: result 13: Connection failed. Cause: 10.0.0.5:443: "
      "refused; check the address. Log: /tmp/a.log");
}

TEST(ResultLine, QuestionEndsItself) {
  EXPECT_EQ(resultLine({13, "", "x: is this the address?", "", false}, ""),
            "brivel: result 13: Connection failed. Cause: x: is this the "
            "address?");
}

TEST(ResultLine, LeavesOutWhatIsNotKnown) {
  EXPECT_EQ(resultLine({4, "", "", "", false}, ""),
            "brivel: result 4: Invalid command.");
}

TEST(ResultLine, PrefersTheApplicationsMessage) {
  EXPECT_EQ(resultLine({4, "No such fan.", "", "", false}, ""),
            "brivel: result 4: No such fan.");
}

TEST(ResultLine, EndsEverySentenceOnce) {
  EXPECT_EQ(resultLine({36, "", "why.", "", false}, ""),
            "brivel: result 36: Failed to verify the certificate/fingerprint "
            "for the connection(s) you specified. Cause: why.");
}

TEST(ResultLine, CutsBlanksBehindAMessage) {
  EXPECT_EQ(resultLine({30, "", "x", "", false}, "").find("  "),
            std::string::npos);
}

TEST(ResultLine, NumbersThatNobodyKnowsAreTold) {
  EXPECT_EQ(resultLine({0x7001, "", "", "", false}, "")
                .rfind("brivel: result 28673: ", 0),
            0U);
}

TEST(ResultLine, HoldsNoControlCharacters) {
  EXPECT_EQ(resultLine({4, "", "a\nb", "", false}, "").find('\n'),
            std::string::npos);
}

TEST(ResultLine, DoesNotNameACodeOfSeveralItems) {
  EXPECT_EQ(resultLine({29, "", "why", "", true}, ""),
            "brivel: result 29 (several items failed). Cause: why.");
  EXPECT_EQ(resultLine({29, "its own words", "", "", true}, ""),
            "brivel: result 29: its own words.");
}

TEST(ResultLines, HaveALineForEachPart) {
  EXPECT_EQ(brivel::resultLines(
                {13, "", "10.0.0.5:443: refused", "check the address", false},
                "/tmp/a.log", 80),
            "brivel: result 13: Connection failed.\n"
            "  cause:  10.0.0.5:443: refused\n"
            "  remedy: check the address\n"
            "  log:    /tmp/a.log\n");
  EXPECT_EQ(brivel::resultLines({4, "", "", "", false}, "", 80),
            "brivel: result 4: Invalid command.\n");
}

TEST(ResultLines, AreFoldedBetweenWords) {
  EXPECT_EQ(
      brivel::resultLines({1, "m", "one two three four", "", false}, "", 20),
      "brivel: result 1: m.\n"
      "  cause:  one two\n"
      "          three four\n");
}

}  // namespace
