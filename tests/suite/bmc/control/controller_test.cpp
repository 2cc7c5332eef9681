#include "tests/bmc/control/controller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>

#include "tests/bmc/control/control_client.h"
#include "tests/bmc/options.h"
#include "tests/suite/bmc/control/fetch.h"
#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kSample = SAMPLES "/rack-server";
const std::string kCredentials =
    std::string(kDefaultUser) + ":" + kDefaultPassword;

std::vector<std::string> serving(std::vector<std::string> further = {}) {
  further.insert(further.begin(), {"--tree", kSample});
  return further;
}

Fetch rootOf(const Controller& controller) {
  Fetch fetch;
  fetch.url = "https://" + controller.https() + "/redfish/v1/";
  fetch.authority = controller.ready().certificate;
  return fetch;
}

Fetch loginAt(const Controller& controller) {
  Fetch fetch = rootOf(controller);
  fetch.url += "SessionService/Sessions";
  fetch.body = std::string(R"({"UserName":")") + kDefaultUser +
               R"(","Password":")" + kDefaultPassword + R"("})";
  return fetch;
}

TEST(Controller, ServesItsTreeOverHttpsUnderItsOwnAuthority) {
  const Controller controller(serving());
  ASSERT_TRUE(controller.running());
  Fetcher client;
  const FetchResult root = client.get(rootOf(controller));
  EXPECT_EQ(root.error, 0);
  EXPECT_EQ(root.status, 200);
  EXPECT_THAT(root.body, HasSubstr("#ServiceRoot."));
  const Counters counters = controller.counters();
  EXPECT_EQ(counters.tlsHandshakes, 1U);
  EXPECT_EQ(counters.connections, 1U);
}

TEST(Controller, IsNotTrustedWithoutItsCertificate) {
  const Controller controller(serving());
  Fetch fetch = rootOf(controller);
  fetch.authority.clear();
  Fetcher client;
  EXPECT_EQ(client.get(fetch).error, 60);  // CURLE_PEER_FAILED_VERIFICATION
}

TEST(Controller, HasTheKeyThatItsPinNames) {
  const Controller controller(serving());
  Fetch fetch = rootOf(controller);
  fetch.insecure = true;
  fetch.pin = controller.ready().pin;
  Fetcher client;
  EXPECT_EQ(client.get(fetch).status, 200);
  fetch.pin = "sha256//AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=";
  EXPECT_EQ(Fetcher().get(fetch).error, 90);  // CURLE_SSL_PINNEDPUBKEYNOTMATCH
}

TEST(Controller, ServesPlainHttpBeside) {
  const Controller controller(serving());
  Fetch fetch;
  fetch.url = "http://" + controller.http() + "/redfish/v1/Systems";
  fetch.user = kCredentials;
  Fetcher client;
  EXPECT_EQ(client.get(fetch).status, 200);
  EXPECT_EQ(controller.counters().authenticatedByBasic, 1U);
  EXPECT_EQ(controller.counters().tlsHandshakes, 0U);
}

TEST(Controller, KeepsConnectionsOpen) {
  const Controller controller(serving());
  Fetcher client;
  EXPECT_TRUE(client.get(rootOf(controller)).newConnection);
  EXPECT_FALSE(client.get(rootOf(controller)).newConnection);
  EXPECT_EQ(controller.counters().connections, 1U);
  EXPECT_EQ(controller.counters().requests, 2U);
}

TEST(Controller, TellsWhoCreatedAndDeletedSessions) {
  const Controller controller(serving());
  Fetcher client;
  const FetchResult session = client.get(loginAt(controller));
  ASSERT_EQ(session.status, 201);
  EXPECT_EQ(controller.counters().sessionsOpen, 1U);

  Fetch logout = rootOf(controller);
  logout.method = "DELETE";
  logout.url = "https://" + controller.https() + session.headers.at("location");
  logout.headers = {"X-Auth-Token: " + session.headers.at("x-auth-token")};
  EXPECT_EQ(client.get(logout).status, 204);
  EXPECT_EQ(controller.counters().sessionsDeleted, 1U);
  EXPECT_EQ(controller.counters().sessionsOpen, 0U);
}

TEST(Controller, DelaysOverlapOnDifferentConnections) {
  const Controller controller(serving({"--delay-ms", "300"}));
  const std::vector<FetchResult> answers =
      fetchTogether(std::vector<Fetch>(8, rootOf(controller)));
  for (const FetchResult& answer : answers) {
    EXPECT_EQ(answer.status, 200);
    EXPECT_GE(answer.seconds, 0.3);
  }
  EXPECT_GE(controller.counters().maxOpenRequests, 4U);
  EXPECT_EQ(controller.counters().openRequests, 0U);
}

TEST(Controller, LogHoldsRequestsButNoSecrets) {
  const Controller controller(serving());
  Fetcher client;
  const FetchResult session = client.get(loginAt(controller));
  Fetch read = rootOf(controller);
  read.headers = {"X-Auth-Token: " + session.headers.at("x-auth-token"),
                  "OData-Version: 4.0"};
  read.url += "Systems";
  EXPECT_EQ(client.get(read).status, 200);

  const auto requests = controller.requests();
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[1].method, "GET");
  EXPECT_EQ(requests[1].target, "/redfish/v1/Systems");
  EXPECT_EQ(requests[1].status, 200);
  EXPECT_EQ(requests[1].authentication, "token");
  EXPECT_TRUE(requests[1].complete);
  EXPECT_EQ(requests[1].headers.at("OData-Version"), "4.0");
  const std::string log = controller.log();
  EXPECT_THAT(log, Not(HasSubstr(kDefaultPassword)));
  EXPECT_THAT(log, Not(HasSubstr(session.headers.at("x-auth-token"))));
}

TEST(Controller, AnswersWhatIsNoHttpAndGoesOn) {
  const Controller controller(serving());
  Fetch fetch = rootOf(controller);
  fetch.url = "https://" + controller.http() + "/redfish/v1/";
  EXPECT_NE(Fetcher().get(fetch).error, 0);
  EXPECT_EQ(Fetcher().get(rootOf(controller)).status, 200);
}

TEST(Controller, StopsInOrder) {
  Controller controller(serving());
  Fetcher client;
  EXPECT_EQ(client.get(rootOf(controller)).status, 200);
  EXPECT_EQ(controller.stop(), 0);
  EXPECT_NE(Fetcher().get(rootOf(controller)).error, 0);
}

TEST(Controller, EndsWithTheProcessThatStartedIt) {
  const RecordedTree folder({});
  const std::string directory = folder.folder();
  const std::string script = "'" + Controller::program() + "' --tree '" +
                             kSample + "' --dir '" + directory +
                             "' </dev/null & while [ ! -e '" + directory +
                             "/ready.json' ]; do sleep 0.01; done";
  ASSERT_EQ(std::system(script.c_str()), 0);
  Ready ready;
  ASSERT_TRUE(readReady(directory, ready));
  Fetch fetch;
  fetch.url = "http://" + hostAndPort(ready.address, ready.httpPort);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (Fetcher().get(fetch).error == 0) {
    ASSERT_LT(std::chrono::steady_clock::now(), end) << "it still answers";
  }
}

TEST(Controller, DoesNotComeUpWithoutATree) {
  testing::internal::CaptureStderr();
  const Controller controller({"--tree", SAMPLES});
  EXPECT_FALSE(controller.running());
  EXPECT_THAT(testing::internal::GetCapturedStderr(),
              HasSubstr("service root"));
}

}  // namespace
}  // namespace bmc
