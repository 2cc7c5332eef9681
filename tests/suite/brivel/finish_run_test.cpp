#include "suite/brivel/finish_run.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "suite/base/failure.h"

namespace {

using brivel::runGuarded;

int throwError() { throw std::runtime_error("out | of luck"); }

int throwFailure() {
  throw base::makeFailure(base::FailureKind::kInternal, "no such node");
}

TEST(RunGuarded, StatusOfTheRunIsKept) {
  EXPECT_EQ(runGuarded([] { return 5; }, false), 5);
  EXPECT_EQ(runGuarded([] { return 2; }, true), 2);
}

TEST(RunGuarded, ExceptionIsAnInternalError) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(runGuarded(throwError, false), 17);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "brivel: internal error: out | of luck\n");
}

TEST(RunGuarded, PlugInKnowsNothingAfterAnException) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(runGuarded(throwError, true), 3);
  EXPECT_EQ(runGuarded(throwFailure, true), 3);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "BRIVEL UNKNOWN - internal error: out / of luck\n"
            "BRIVEL UNKNOWN - internal error: no such node\n");
}

}  // namespace
