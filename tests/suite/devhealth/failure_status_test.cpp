#include "suite/devhealth/failure_status.h"

#include <gtest/gtest.h>

namespace devhealth {
namespace {

using Kind = base::FailureKind;

struct Row {
  Kind kind;
  int connecting;
  int reading;
};

// clang-format off
constexpr Row kRows[] = {
    {Kind::kNameNotResolved,   -1, -1},
    {Kind::kUnreachable,       -1, -1},
    {Kind::kConnectTimeout,    -1, -3},
    {Kind::kReadTimeout,       -1, -3},
    {Kind::kDeadline,          -1, -3},
    {Kind::kCertificate,       -1, -1},
    {Kind::kTls,               -1, -1},
    {Kind::kAuthentication,    -2, -2},
    {Kind::kForbidden,         -2, -2},
    {Kind::kPasswordChange,    -2, -2},
    {Kind::kNoCredentials,     -2, -2},
    {Kind::kCredentialMissing, -2, -2},
    {Kind::kBusy,              -2, -2},
    {Kind::kServerError,       -5, -5},
    {Kind::kNotRedfish,        -4, -4},
    {Kind::kNoSystem,          -4, -4},
    {Kind::kNotFound,          -4, -4},
    {Kind::kBadContent,        -3, -3},
    {Kind::kRefusedLink,       -3, -3},
    {Kind::kDirectoryMissing,  -1, -1},
    {Kind::kFileUnreadable,    -3, -3},
    {Kind::kNoHostInterface,   -1, -1},
    {Kind::kNoHostAddress,     -1, -1},
    {Kind::kNotPermitted,      -4, -4},
    {Kind::kNoBootstrapAccount, -2, -2},
    {Kind::kIpmiDevice,        -2, -2},
    {Kind::kUsage,             -5, -5},
    {Kind::kInterrupted,       -5, -5},
    {Kind::kInternal,          -5, -5},
};
// clang-format on

TEST(StatusOf, EveryKindHasItsStatus) {
  for (const Row& row : kRows) {
    EXPECT_EQ(statusOf(row.kind, Phase::kConnecting), row.connecting)
        << static_cast<int>(row.kind);
    EXPECT_EQ(statusOf(row.kind, Phase::kReading), row.reading)
        << static_cast<int>(row.kind);
  }
}

TEST(StatusOf, TableHoldsEveryKind) {
  EXPECT_EQ(std::size(kRows), static_cast<std::size_t>(Kind::kInternal) + 1);
}

}  // namespace
}  // namespace devhealth
