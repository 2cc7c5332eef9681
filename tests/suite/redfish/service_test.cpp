// The first steps with a service: its root, and what is no service at all.
#include "suite/redfish/service.h"

#include <gtest/gtest.h>

#include "suite/base/progress.h"
#include "tests/suite/redfish/service_fixture.h"

namespace {

using base::FailureKind;

struct ServiceOpen : ScriptedService, testing::Test {
  ServiceOpen() { options.user.clear(); }
  std::optional<base::Failure> rootAnswers(int status, std::string body) {
    script->on("GET /redfish/v1/", status, std::move(body));
    return start().open();
  }
};

TEST_F(ServiceOpen, RootIsInTheGraph) {
  EXPECT_FALSE(rootAnswers(200, kRootBody));
  EXPECT_NE(service->graph().find("/redfish/v1"), nullptr);
}

// What an observer has been told.
struct Observer : base::Progress {
  std::uint64_t read = 0;
  int ends = 0;

  void tick(std::uint64_t resourcesRead) override { read = resourcesRead; }
  void done() override { ++ends; }
};

TEST_F(ServiceOpen, ItsObserverIsToldOfEachReading) {
  Observer observer;
  options.progress = &observer;
  EXPECT_FALSE(rootAnswers(200, kRootBody));
  EXPECT_EQ(observer.ends, 1);
  script->on("GET /redfish/v1/Systems", 200, R"({"Members": []})");
  static_cast<void>(service->read(wanting(redfish::kWantProcessors)));
  EXPECT_EQ(observer.read, 1U);  // The root; Systems is just coming.
  EXPECT_EQ(observer.ends, 2);
}

TEST_F(ServiceOpen, MissingRootIsNoRedfish) {
  EXPECT_EQ(rootAnswers(404, "")->kind, base::FailureKind::kNotRedfish);
}

TEST_F(ServiceOpen, MissingRootMayBeNamedByTheVersions) {
  script->on("GET /redfish", 200, R"({"v1": "/redfish/v1/Root"})");
  script->on("GET /redfish/v1/Root", 200, kRootBody);
  EXPECT_FALSE(rootAnswers(404, ""));
}

TEST_F(ServiceOpen, HtmlIsNoRedfish) {
  EXPECT_EQ(rootAnswers(200, "<html>hello</html>")->kind,
            base::FailureKind::kNotRedfish);
}

TEST_F(ServiceOpen, OtherJsonIsNoRedfish) {
  EXPECT_EQ(rootAnswers(200, R"({"hello": "world"})")->kind,
            base::FailureKind::kNotRedfish);
}

TEST_F(ServiceOpen, AnotherMajorVersionIsNoRedfishOfOurs) {
  EXPECT_EQ(rootAnswers(200, R"({"@odata.type": "#ServiceRoot.v2.ServiceRoot",
                                 "RedfishVersion": "2.0.0"})")
                ->kind,
            base::FailureKind::kNotRedfish);
}

TEST_F(ServiceOpen, TruncatedRootIsBadContent) {
  EXPECT_EQ(rootAnswers(200, R"({"@odata.type": "#Serv)")->kind,
            base::FailureKind::kBadContent);
}

TEST_F(ServiceOpen, RootBehindALoginIsReplacedByTheStandardUris) {
  EXPECT_FALSE(rootAnswers(401, ""));
  EXPECT_EQ(service->read(wanting(redfish::kWantProcessors))->kind,
            base::FailureKind::kNoSystem);
  EXPECT_EQ(script->count("GET /redfish/v1/Systems"), 1U);
}

TEST_F(ServiceOpen, ServerErrorAtTheRootIsTold) {
  EXPECT_EQ(rootAnswers(501, "")->kind, base::FailureKind::kServerError);
}

TEST_F(ServiceOpen, BusyRootIsWaitedFor) {
  auto busy = answerOf(503, "");
  busy.retryAfter = "1";
  script->on("GET /redfish/v1/", busy);
  EXPECT_FALSE(rootAnswers(200, kRootBody));
  EXPECT_EQ(service->stats().retries, 1U);
}

TEST_F(ServiceOpen, AskedOnce) {
  rootAnswers(404, "");
  service->open();
  EXPECT_EQ(script->count("GET /redfish/v1/"), 1U);
}

TEST_F(ServiceOpen, RecordedServerNeedsNoLogin) {
  options.user = "admin";
  script->live = false;
  EXPECT_FALSE(rootAnswers(200, kRootBody));
  EXPECT_EQ(script->count("POST"), 0U);
}

TEST_F(ServiceOpen, OneRequestAtATimeWhereTheServiceBearsNoMore) {
  std::string root = kRootBody;
  root.insert(1, R"("ProtocolFeaturesSupported":
                    {"MultipleHTTPRequests": false},)");
  EXPECT_FALSE(rootAnswers(200, root));
  script->mostUnderWay = 0;
  service->read(wanting(redfish::kWantSystem));
  EXPECT_EQ(script->mostUnderWay, 1U);
}

}  // namespace
