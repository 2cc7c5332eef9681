#include "suite/base/failure.h"

#include <gtest/gtest.h>

namespace base {
namespace {

TEST(Describe, TellsAddressUriCauseAndRemedyInOneLine) {
  EXPECT_EQ(
      describe({FailureKind::kForbidden, "10.0.0.5:443", "/redfish/v1/Systems",
                "the privilege is missing", "use another account"}),
      "10.0.0.5:443: /redfish/v1/Systems: the privilege is missing; use "
      "another account");
}

TEST(Describe, LeavesEmptyPartsOut) {
  EXPECT_EQ(describe({FailureKind::kUnreachable, "10.0.0.5:443", "",
                      "connection refused", ""}),
            "10.0.0.5:443: connection refused");
}

TEST(Describe, NothingSaidIsEmpty) { EXPECT_EQ(describe({}), ""); }

}  // namespace
}  // namespace base
