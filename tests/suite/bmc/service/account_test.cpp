#include "tests/bmc/service/account.h"

#include <gtest/gtest.h>

namespace bmc {
namespace {

const Account kAccount{"admin", "pa:ss"};

TEST(Authenticate, NothingGivenIsNone) {
  EXPECT_EQ(authenticate({}, kAccount, Sessions(1)), Authentication::kNone);
}

TEST(Authenticate, TokenOfAnOpenSessionIsTaken) {
  Sessions sessions(1);
  const std::string token = sessions.open("admin")->token;
  EXPECT_EQ(authenticate({{"x-auth-token", token}}, kAccount, sessions),
            Authentication::kToken);
}

TEST(Authenticate, TokenOfAClosedSessionIsRefused) {
  Sessions sessions(1);
  const Session session = *sessions.open("admin");
  ASSERT_TRUE(sessions.close(session.id));
  EXPECT_EQ(authenticate({{"X-Auth-Token", session.token}}, kAccount, sessions),
            Authentication::kRefused);
}

TEST(Authenticate, BasicMayHoldColonsInThePassword) {
  // "admin:pa:ss"
  EXPECT_EQ(authenticate({{"Authorization", "Basic YWRtaW46cGE6c3M="}},
                         kAccount, Sessions(1)),
            Authentication::kBasic);
}

TEST(Authenticate, WrongBasicIsRefused) {
  // "admin:no", no base64, and another scheme
  for (const char* value : {"Basic YWRtaW46bm8=", "Basic !", "Digest x"}) {
    EXPECT_EQ(authenticate({{"Authorization", value}}, kAccount, Sessions(1)),
              Authentication::kRefused)
        << value;
  }
}

}  // namespace
}  // namespace bmc
