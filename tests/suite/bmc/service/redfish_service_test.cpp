#include "tests/bmc/service/redfish_service.h"

#include <gtest/gtest.h>

#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {
namespace {

class RedfishServiceTest : public testing::Test {
 protected:
  RedfishServiceTest() : files_(smallService()) {
    settings_.account = {"admin", "secret"};
  }

  RedfishService& service() {
    if (!service_) {
      std::string error;
      auto tree = Tree::load(files_.folder(), error);
      service_.emplace(std::move(*tree), settings_, counters_);
    }
    return *service_;
  }

  Reply ask(const char* method, std::string target, Headers headers = {},
            std::string body = {}) {
    Request request;
    request.method = method;
    request.target = std::move(target);
    request.headers = std::move(headers);
    request.body = std::move(body);
    return service().answer(request);
  }

  Reply login(const char* password = "secret") {
    return ask("POST", "/redfish/v1/SessionService/Sessions", {},
               std::string(R"({"UserName":"admin","Password":")") + password +
                   R"("})");
  }

  static std::string bodyOf(const Reply& reply) {
    const auto* text = dynamic_cast<const TextBody*>(reply.body.get());
    return text == nullptr ? std::string() : text->text();
  }

  RecordedTree files_;
  ServiceSettings settings_;
  Counters counters_;
  std::optional<RedfishService> service_;
};

TEST_F(RedfishServiceTest, RootNeedsNoLogin) {
  EXPECT_EQ(ask("GET", "/redfish/v1/").status, 200);
}

TEST_F(RedfishServiceTest, EverythingElseNeedsOne) {
  const Reply reply = ask("GET", "/redfish/v1/Systems");
  EXPECT_EQ(reply.status, 401);
  EXPECT_NE(headerOf(reply.headers, "WWW-Authenticate"), "");
}

TEST_F(RedfishServiceTest, OpenServiceNeedsNone) {
  settings_.open = true;
  EXPECT_EQ(ask("GET", "/redfish/v1/Systems").status, 200);
}

TEST_F(RedfishServiceTest, LoginGivesATokenThatOpensResources) {
  const Reply session = login();
  EXPECT_EQ(session.status, 201);
  EXPECT_EQ(headerOf(session.headers, "Location"),
            "/redfish/v1/SessionService/Sessions/1");
  const std::string token(headerOf(session.headers, "X-Auth-Token"));
  EXPECT_EQ(ask("GET", "/redfish/v1/Systems", {{"X-Auth-Token", token}}).status,
            200);
  EXPECT_EQ(counters_.sessionsCreated, 1U);
  EXPECT_EQ(counters_.authenticatedByToken, 1U);
}

TEST_F(RedfishServiceTest, LogoutEndsTheSession) {
  const Reply session = login();
  const Headers headers{
      {"X-Auth-Token", std::string(headerOf(session.headers, "X-Auth-Token"))}};
  const std::string location(headerOf(session.headers, "Location"));
  EXPECT_EQ(ask("DELETE", location, headers).status, 204);
  EXPECT_EQ(ask("GET", "/redfish/v1/Systems", headers).status, 401);
  EXPECT_EQ(counters_.sessionsDeleted, 1U);
  EXPECT_EQ(counters_.sessionsOpen, 0U);
}

TEST_F(RedfishServiceTest, WrongPasswordIsRefusedAndCounted) {
  EXPECT_EQ(login("wrong").status, 401);
  EXPECT_EQ(counters_.loginsRefused, 1U);
  EXPECT_EQ(counters_.sessionsCreated, 0U);
}

TEST_F(RedfishServiceTest, FullSessionTableAnswers503) {
  settings_.maxSessions = 1;
  EXPECT_EQ(login().status, 201);
  EXPECT_EQ(login().status, 503);
  EXPECT_EQ(counters_.sessionsRefused, 1U);
}

TEST_F(RedfishServiceTest, SessionsAreResources) {
  const Reply session = login();
  const Headers headers{
      {"X-Auth-Token", std::string(headerOf(session.headers, "X-Auth-Token"))}};
  const std::string path = "/redfish/v1/SessionService/Sessions";
  EXPECT_NE(bodyOf(ask("GET", path, headers)).find(path + "/1"),
            std::string::npos);
  EXPECT_EQ(ask("GET", path + "/1", headers).status, 200);
  EXPECT_EQ(ask("GET", path + "/2", headers).status, 404);
}

TEST_F(RedfishServiceTest, MissingResourceAnswers404) {
  settings_.open = true;
  EXPECT_EQ(ask("GET", "/redfish/v1/Nothing").status, 404);
}

TEST_F(RedfishServiceTest, WritingIsNotAllowed) {
  settings_.open = true;
  EXPECT_EQ(ask("PATCH", "/redfish/v1/Systems/1").status, 405);
}

TEST_F(RedfishServiceTest, ExpandIsRefusedWhereItIsNotSupported) {
  settings_.open = true;
  EXPECT_EQ(ask("GET", "/redfish/v1/Systems?$expand=.").status, 501);
}

TEST_F(RedfishServiceTest, ExpandIsAdvertisedAndServed) {
  settings_.open = true;
  settings_.maxExpandLevels = 2;
  EXPECT_NE(bodyOf(ask("GET", "/redfish/v1")).find(R"("MaxLevels":2)"),
            std::string::npos);
  EXPECT_NE(bodyOf(ask("GET", "/redfish/v1/Systems?$expand=.")).find("Id"),
            std::string::npos);
  EXPECT_EQ(ask("GET", "/redfish/v1/Systems?$expand=.($levels=3)").status, 400);
}

TEST_F(RedfishServiceTest, PagesFollowOneAnother) {
  settings_.open = true;
  settings_.pageSize = 1;
  EXPECT_NE(bodyOf(ask("GET", "/redfish/v1/Systems")).find("?$skip=1"),
            std::string::npos);
  const std::string last = bodyOf(ask("GET", "/redfish/v1/Systems?$skip=1"));
  EXPECT_NE(last.find("Systems/2"), std::string::npos);
  EXPECT_EQ(last.find("nextLink"), std::string::npos);
}

TEST_F(RedfishServiceTest, TokenEndsAfterItsUses) {
  settings_.sessionLife = {2, 1};
  const Headers first{
      {"X-Auth-Token", std::string(headerOf(login().headers, "X-Auth-Token"))}};
  EXPECT_EQ(ask("GET", "/redfish/v1/Systems", first).status, 200);
  EXPECT_EQ(ask("GET", "/redfish/v1/Systems", first).status, 200);
  EXPECT_EQ(ask("GET", "/redfish/v1/Systems", first).status, 401);
  EXPECT_EQ(counters_.sessionsExpired, 1U);
  EXPECT_EQ(counters_.sessionsOpen, 0U);

  const Headers second{
      {"X-Auth-Token", std::string(headerOf(login().headers, "X-Auth-Token"))}};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(ask("GET", "/redfish/v1/Systems", second).status, 200);
  }
}

}  // namespace
}  // namespace bmc
