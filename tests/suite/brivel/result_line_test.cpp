#include "suite/brivel/result_line.h"

#include <gtest/gtest.h>

namespace {

using brivel::resultLine;
using brivel::RunResult;

TEST(ResultLine, HoldsCodeMessageCauseAndLog) {
  EXPECT_EQ(resultLine({13, "", "10.0.0.5:443: refused; check the address"},
                       "/tmp/a.log"),
            "brivel: result 13: Connection failed. Cause: 10.0.0.5:443: "
            "refused; check the address. Log: /tmp/a.log");
}

TEST(ResultLine, QuestionEndsItself) {
  EXPECT_EQ(resultLine({13, "", "x: is this the address?"}, ""),
            "brivel: result 13: Connection failed. Cause: x: is this the "
            "address?");
}

TEST(ResultLine, LeavesOutWhatIsNotKnown) {
  EXPECT_EQ(resultLine({4, "", ""}, ""), "brivel: result 4: Invalid command.");
}

TEST(ResultLine, PrefersTheApplicationsMessage) {
  EXPECT_EQ(resultLine({4, "No such fan.", ""}, ""),
            "brivel: result 4: No such fan.");
}

TEST(ResultLine, EndsEverySentenceOnce) {
  EXPECT_EQ(resultLine({36, "", "why."}, ""),
            "brivel: result 36: Failed to verify the certificate/fingerprint "
            "for the connection(s) you specified. Cause: why.");
}

TEST(ResultLine, CutsBlanksBehindAMessage) {
  EXPECT_EQ(resultLine({30, "", "x"}, "").find("  "), std::string::npos);
}

TEST(ResultLine, NumbersThatNobodyKnowsAreTold) {
  EXPECT_EQ(resultLine({0x7001, "", ""}, "").rfind("brivel: result 28673: ", 0),
            0U);
}

TEST(ResultLine, HoldsNoControlCharacters) {
  EXPECT_EQ(resultLine({4, "", "a\nb"}, "").find('\n'), std::string::npos);
}

}  // namespace
