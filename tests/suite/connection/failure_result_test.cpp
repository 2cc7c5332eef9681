#include "suite/connection/failure_result.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using base::FailureKind;

struct Row {
  const char* name;
  FailureKind kind;
  int result;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class FailureResult : public testing::TestWithParam<Row> {};

TEST_P(FailureResult, IsTheSuitesCode) {
  EXPECT_EQ(connection::resultOf(GetParam().kind), GetParam().result);
}

// clang-format off
constexpr Row kRows[] = {
    {"NameNotResolved",   FailureKind::kNameNotResolved,   13},
    {"Unreachable",       FailureKind::kUnreachable,       13},
    {"ConnectTimeout",    FailureKind::kConnectTimeout,    18},
    {"ReadTimeout",       FailureKind::kReadTimeout,       18},
    {"Deadline",          FailureKind::kDeadline,          18},
    {"Certificate",       FailureKind::kCertificate,       36},
    {"Tls",               FailureKind::kTls,               13},
    {"Authentication",    FailureKind::kAuthentication,    12},
    {"Forbidden",         FailureKind::kForbidden,         12},
    {"PasswordChange",    FailureKind::kPasswordChange,    12},
    {"NoCredentials",     FailureKind::kNoCredentials,     40},
    {"CredentialMissing", FailureKind::kCredentialMissing, 43},
    {"Busy",              FailureKind::kBusy,              27},
    {"ServerError",       FailureKind::kServerError,       27},
    {"NotRedfish",        FailureKind::kNotRedfish,        13},
    {"NoSystem",          FailureKind::kNoSystem,          0},
    {"NotFound",          FailureKind::kNotFound,          13},
    {"BadContent",        FailureKind::kBadContent,        27},
    {"RefusedLink",       FailureKind::kRefusedLink,       27},
    {"DirectoryMissing",  FailureKind::kDirectoryMissing,  6},
    {"FileUnreadable",    FailureKind::kFileUnreadable,    10},
    {"NoHostInterface",   FailureKind::kNoHostInterface,   26},
    {"NoHostAddress",     FailureKind::kNoHostAddress,     33},
    {"NotPermitted",      FailureKind::kNotPermitted,      30},
    {"NoBootstrapAccount", FailureKind::kNoBootstrapAccount, 19},
    {"IpmiDevice",        FailureKind::kIpmiDevice,        50},
    {"Usage",             FailureKind::kUsage,             5},
    {"Interrupted",       FailureKind::kInterrupted,       47},
    {"Internal",          FailureKind::kInternal,          17},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Kinds, FailureResult, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace
