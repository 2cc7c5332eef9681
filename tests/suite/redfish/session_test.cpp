// Logins as a service meets them: what is sent, and that no session is left.
#include "suite/redfish/session/session.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/suite/log_recorder.h"
#include "tests/suite/redfish/service_fixture.h"

namespace {

using base::FailureKind;

constexpr const char* kSessions = "/redfish/v1/SessionService/Sessions";
const std::string kLogin = std::string("POST ") + kSessions;

bool logHolds(const std::string& text) {
  const std::vector<LogLine>& lines = loggedLines();
  return std::any_of(lines.begin(), lines.end(), [&text](const LogLine& line) {
    return line.text.find(text) != std::string::npos;
  });
}

struct SessionTest : ScriptedService, testing::Test {
  SessionTest() { script->on("GET /redfish/v1/", 200, kRootBody); }

  // The scripted login answer with a token.
  static http::Answer granted(std::string location, std::string body = "") {
    http::Answer answer = answerOf(201, std::move(body));
    answer.authToken = base::Secret("tok");
    answer.location = std::move(location);
    return answer;
  }
};

TEST_F(SessionTest, LoginGoesOutBesideTheRootRequest) {
  EXPECT_FALSE(start().open());
  EXPECT_EQ(script->mostUnderWay, 2U);
  EXPECT_EQ(script->count("POST"), 1U);
  EXPECT_EQ(service->stats().levels, 1U);
}

TEST_F(SessionTest, ClosingDeletesTheSessionOnce) {
  start().open();
  service->close();
  service.reset();
  EXPECT_EQ(script->count("DELETE"), 1U);
  EXPECT_EQ(script->sessionsOpen, 0);
}

TEST_F(SessionTest, WithoutUserNothingIsSent) {
  options.user.clear();
  EXPECT_FALSE(start().open());
  EXPECT_EQ(script->count("POST"), 0U);
}

TEST_F(SessionTest, WrongPasswordIsTriedOnce) {
  script->on(kLogin, 401);
  const auto failure = start().open();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->kind, base::FailureKind::kAuthentication);
  EXPECT_TRUE(service->open());
  EXPECT_TRUE(service->read(wanting(redfish::kWantSystem)));
  service.reset();
  EXPECT_EQ(script->count("POST"), 1U);
}

TEST_F(SessionTest, ForbiddenLoginIsAnAuthenticationFailure) {
  script->on(kLogin, 403);
  EXPECT_EQ(start().open()->kind, base::FailureKind::kAuthentication);
}

TEST_F(SessionTest, PasswordThatMustBeChangedIsTold) {
  script->on(kLogin, 403, R"({"error": {"@Message.ExtendedInfo": [
      {"MessageId": "Base.1.18.PasswordChangeRequired"}]}})");
  EXPECT_EQ(start().open()->kind, base::FailureKind::kPasswordChange);
}

TEST_F(SessionTest, RootNamesAnotherPlaceForSessions) {
  std::string root = kRootBody;
  root.replace(root.find(kSessions), std::string(kSessions).size(),
               "/redfish/v1/Logins");
  script->answers.clear();
  script->on("GET /redfish/v1/", 200, root).on(kLogin, 404);
  EXPECT_FALSE(start().open());
  service.reset();
  EXPECT_EQ(script->count("POST /redfish/v1/Logins"), 1U);
  EXPECT_EQ(script->count("DELETE /redfish/v1/Logins/1"), 1U);
}

TEST_F(SessionTest, BasicWhenNoSessionCanBeMade) {
  for (const int status : {400, 404, 405, 501, 503}) {
    ScriptedService one;
    one.script->on("GET /redfish/v1/", 200, kRootBody)
        .on(kLogin, status)
        .on("GET /redfish/v1/Systems", 404);
    EXPECT_FALSE(one.start().open()) << status;
    one.service->read(wanting(redfish::kWantProcessors));
    EXPECT_EQ(one.script->sent.back().basicUser, "admin") << status;
    EXPECT_EQ(one.script->count("DELETE"), 0U) << status;
  }
}

TEST_F(SessionTest, CredentialsRefusedWith400AreNotTriedByBasic) {
  for (const char* key : {"ResourceAtUriUnauthorized", "AccountLocked",
                          "NoValidSession", "InsufficientPrivilege",
                          "AuthenticationFailed", "InvalidCredentials"}) {
    ScriptedService one;
    one.script->on("GET /redfish/v1/", 200, kRootBody)
        .on(kLogin, 400,
            R"({"error": {"@Message.ExtendedInfo": [{"MessageId": "Base.1.18.)" +
                std::string(key) + "\"}]}}");
    EXPECT_EQ(one.start().open()->kind, base::FailureKind::kAuthentication)
        << key;
    one.service.reset();
    EXPECT_EQ(one.script->count("POST"), 1U) << key;
    for (const auto& request : one.script->sent) {
      EXPECT_EQ(request.basicUser, "") << key;
    }
  }
}

TEST_F(SessionTest, BasicWhenTheAnswerHasNoToken) {
  script->on(kLogin, 201).on("GET /redfish/v1/Systems", 404);
  start().read(wanting(redfish::kWantProcessors));
  EXPECT_EQ(script->sent.back().basicUser, "admin");
}

TEST_F(SessionTest, BasicWhenTheRootNamesNoSessionsAndSays401) {
  std::string root = kRootBody;
  root.replace(root.find("Sessions"), 8, "Nothing_");
  script->answers.clear();
  script->on("GET /redfish/v1/", 200, root).on(kLogin, 401);
  script->on("GET /redfish/v1/Systems", 404);
  EXPECT_FALSE(start().open());
  service->read(wanting(redfish::kWantProcessors));
  EXPECT_EQ(script->sent.back().basicUser, "admin");
}

TEST_F(SessionTest, FullTableAndRefusedBasicIsBusy) {
  script->on(kLogin, 503).on("GET /redfish/v1/Systems", 401);
  EXPECT_EQ(start().read(wanting(redfish::kWantProcessors))->kind,
            base::FailureKind::kBusy);
}

TEST_F(SessionTest, WrongPasswordIsTriedOnceWithBasicToo) {
  options.maxConnections = 16;
  script->on(kLogin, 404).on("GET /redfish/v1/Systems", 401);
  EXPECT_EQ(start().open()->kind, base::FailureKind::kAuthentication);
  EXPECT_TRUE(service->read(wanting(redfish::kWantHealth)));
  std::size_t withPassword = 0;
  for (const http::Request& request : script->sent) {
    if (!request.basicPassword.empty()) {
      ++withPassword;
    }
  }
  EXPECT_EQ(withPassword, 1U);
}

TEST_F(SessionTest, SessionWithoutATokenIsDeletedWithBasic) {
  auto answer = granted("/redfish/v1/SessionService/Sessions/4");
  answer.authToken.clear();
  script->on(kLogin, answer).on("GET /redfish/v1/Systems", 404);
  EXPECT_FALSE(start().open());
  service.reset();
  EXPECT_EQ(script->requests.back(), std::string("DELETE ") + kSessions + "/4");
  EXPECT_EQ(script->sent.back().basicUser, "admin");
}

TEST_F(SessionTest, LocationOfAnotherHostIsDeletedHere) {
  script->on(kLogin,
             granted(std::string("http://10.9.9.9") + kSessions + "/7"));
  start().open();
  service.reset();
  EXPECT_EQ(script->requests.back(), std::string("DELETE ") + kSessions + "/7");
}

TEST_F(SessionTest, LocationOutsideOfTheSessionsIsNotDeleted) {
  script->on(kLogin, granted("/redfish/v1/Systems/1/Storage/1/Volumes/1"))
      .on(std::string("GET ") + kSessions, 200,
          R"({"Members": [{"@odata.id": ")" + std::string(kSessions) +
              R"(/3"}]})");
  start().open();
  service.reset();
  EXPECT_EQ(script->count("DELETE"), 1U);
  EXPECT_EQ(script->requests.back(), std::string("DELETE ") + kSessions + "/3");
}

TEST_F(SessionTest, AListedLinkOutsideOfTheSessionsIsNotDeleted) {
  script->on(kLogin, granted(""))
      .on(std::string("GET ") + kSessions, 200,
          R"({"Members": [{"@odata.id": "/redfish/v1/Systems/1/Storage/1"}]})");
  start().open();
  service.reset();
  EXPECT_EQ(script->count("DELETE"), 0U);
}

TEST_F(SessionTest, NoneOfSeveralSessionsOfTheUserIsDeleted) {
  clearLog();
  script->on(kLogin, granted(""));
  std::string members;
  for (const char* id : {"/1", "/2"}) {
    const std::string uri = std::string(kSessions) + id;
    members +=
        (members.empty() ? "" : ", ") + (R"({"@odata.id": ")" + uri + R"("})");
    script->on("GET " + uri, 200, R"({"UserName": "admin"})");
  }
  script->on(std::string("GET ") + kSessions, 200,
             R"({"Members": [)" + members + "]}");
  start().open();
  service.reset();
  EXPECT_EQ(script->count("DELETE"), 0U);
  ASSERT_FALSE(loggedLines().empty());
  EXPECT_NE(loggedLines().back().text.find("did not say where its session is"),
            std::string::npos);
}

TEST_F(SessionTest, SecretsThatTheRootRepeatsAreNotTold) {
  // The last is what HTTP Basic makes of user and password.
  for (const char* secret : {"s3cret-word", "YWRtaW46czNjcmV0LXdvcmQ"}) {
    ScriptedService one;
    http::Answer away = answerOf(302);
    away.location = std::string("https://elsewhere.test/") + secret;
    one.script->on("GET /redfish/v1/", away);
    const auto failure = one.start().open();
    ASSERT_TRUE(failure);
    EXPECT_EQ(base::describe(*failure).find(secret), std::string::npos);
    EXPECT_NE(base::describe(*failure).find("elsewhere.test/***"),
              std::string::npos)
        << base::describe(*failure);
  }
}

TEST_F(SessionTest, SecretsInLinksThatCannotBeReadAreNotTold) {
  script->on("GET /redfish/v1/", 200,
             R"({"Systems": {"@odata.id": "/redfish/v1/s3cret-word"}})");
  const auto failure = start().read(wanting(redfish::kWantSystem));
  ASSERT_TRUE(failure);
  EXPECT_EQ(base::describe(*failure).find("s3cret-word"), std::string::npos)
      << base::describe(*failure);
}

TEST_F(SessionTest, RelativeLocationIsJoinedToTheSessions) {
  script->on(kLogin, granted("Sessions/8"));
  start().open();
  service.reset();
  EXPECT_EQ(script->requests.back(), std::string("DELETE ") + kSessions + "/8");
}

TEST_F(SessionTest, WithoutLocationTheBodyNamesTheSession) {
  script->on(kLogin, granted("", R"({"@odata.id":
      "/redfish/v1/SessionService/Sessions/9"})"));
  start().open();
  service.reset();
  EXPECT_EQ(script->requests.back(), std::string("DELETE ") + kSessions + "/9");
}

TEST_F(SessionTest, WithoutAnyNameTheOnlySessionOfOursIsDeleted) {
  const std::string base = kSessions;
  script->on(kLogin, granted(""))
      .on("GET " + base, 200, R"({"Members": [
          {"@odata.id": "/redfish/v1/SessionService/Sessions/1"},
          {"@odata.id": "/redfish/v1/SessionService/Sessions/2"}]})")
      .on("GET " + base + "/1", 200, R"({"UserName": "other"})")
      .on("GET " + base + "/2", 200, R"({"UserName": "admin"})");
  start().open();
  service.reset();
  EXPECT_EQ(script->requests.back(), "DELETE " + base + "/2");
}

TEST_F(SessionTest, SessionGrantedBesideAFailedRootIsDeleted) {
  script->answers.clear();
  script->on("GET /redfish/v1/", failureOf(base::FailureKind::kBadContent));
  EXPECT_TRUE(start().open());
  service.reset();
  EXPECT_EQ(script->sessionsOpen, 0);
}

TEST_F(SessionTest, ExpiredSessionIsRenewedOnce) {
  script->on("GET /redfish/v1/Systems", 401)
      .on("GET /redfish/v1/Systems", 200, R"({"Members": []})");
  EXPECT_EQ(start().read(wanting(redfish::kWantProcessors))->kind,
            base::FailureKind::kNoSystem);
  service.reset();
  EXPECT_EQ(script->count("POST"), 2U);
  EXPECT_EQ(script->requests.back(), std::string("DELETE ") + kSessions + "/2");
}

TEST_F(SessionTest, SessionThatEndsAgainIsGivenUp) {
  script->on("GET /redfish/v1/Systems", 401);
  EXPECT_EQ(start().read(wanting(redfish::kWantProcessors))->kind,
            base::FailureKind::kAuthentication);
  EXPECT_EQ(script->count("POST"), 2U);
}

TEST_F(SessionTest, LoginWhoseAnswerIsLostIsLogged) {
  for (const auto kind :
       {FailureKind::kReadTimeout, FailureKind::kConnectTimeout}) {
    for (const char* const root : {kRootBody, "<html>"}) {
      http::Answer lost;
      lost.failure.emplace();
      lost.failure->kind = kind;
      ScriptedService one;
      one.script->on("GET /redfish/v1/", 200, root).on(kLogin, lost);
      clearLog();
      EXPECT_TRUE(one.start().open());
      one.service.reset();
      EXPECT_EQ(logHolds("the answer to the login was lost"),
                kind == FailureKind::kReadTimeout)
          << root;
    }
  }
}

TEST_F(SessionTest, RefusedLogoutIsLogged) {
  for (const int status : {200, 204, 401, 403, 404, 405, 500}) {
    ScriptedService one;
    one.script->on("GET /redfish/v1/", 200, kRootBody)
        .on("DELETE " + std::string(kSessions) + "/1", status);
    clearLog();
    one.start().open();
    one.service.reset();
    EXPECT_EQ(logHolds("the session may stay open until it times out"),
              status == 403 || status == 405 || status == 500)
        << status;
  }
}

TEST_F(SessionTest, ServiceThatAsksForALoginWithoutAUser) {
  options.user.clear();
  script->on("GET /redfish/v1/Systems", 401);
  EXPECT_EQ(start().read(wanting(redfish::kWantProcessors))->kind,
            base::FailureKind::kNoCredentials);
}

TEST_F(SessionTest, PasswordThatTheServiceRepeatsIsHidden) {
  script->on(kLogin, 401, R"({"error": {"@Message.ExtendedInfo": [
      {"Message": "password s3cret-word is wrong"}]}})");
  clearLog();
  const auto failure = start().open();
  EXPECT_EQ(failure->cause.find("s3cret-word"), std::string::npos);
  EXPECT_NE(failure->cause.find("***"), std::string::npos);
  for (const LogLine& line : loggedLines()) {
    EXPECT_EQ(line.text.find("s3cret-word"), std::string::npos);
  }
}

}  // namespace
