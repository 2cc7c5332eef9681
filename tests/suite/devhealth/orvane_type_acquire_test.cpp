#include "syshealth/health/orvane_type.h"
#include "tests/suite/devhealth/run_fixture.h"

namespace Tarvex::Agentless {
namespace {

using base::FailureKind;

class OrvaneTypeAcquireTest : public RunFixture {
 protected:
  // What the probe answers, with 0 set beforehand.
  int probe() { return OrvaneTypeAcquire(connection).GetOrvaneType(type); }

  OrvaneTypeValue type = kOrvaneTypeUnknown;
};

TEST_F(OrvaneTypeAcquireTest, RedfishServiceIsTheNewest) {
  start();
  EXPECT_EQ(probe(), 0);
  EXPECT_EQ(type, kOrvaneTypeDravik);
  EXPECT_FALSE(run->lastFailure().has_value());
}

TEST_F(OrvaneTypeAcquireTest, RecordedServerIsTheNewest) {
  serve("old-schema");
  script->live = false;
  start();
  EXPECT_EQ(probe(), 0);
  EXPECT_EQ(type, kOrvaneTypeDravik);
}

TEST_F(OrvaneTypeAcquireTest, RootIsReadOnce) {
  start();
  EXPECT_EQ(probe(), 0);
  EXPECT_EQ(probe(), 0);
  EXPECT_EQ(script->count("GET /redfish/v1/"), 1U);
}

TEST_F(OrvaneTypeAcquireTest, OtherServerIsUnknown) {
  script->on("GET /redfish/v1/", 200, "<html>hello</html>");
  start();
  EXPECT_EQ(probe(), 0);
  EXPECT_EQ(type, kOrvaneTypeUnknown);
  ASSERT_TRUE(run->lastFailure().has_value());
  EXPECT_EQ(run->lastFailure()->kind, FailureKind::kNotRedfish);
}

TEST_F(OrvaneTypeAcquireTest, ServiceWithoutSystemsIsUnknown) {
  script->on("GET /redfish/v1/", 200,
             R"({"@odata.type": "#ServiceRoot.v1_9_0.ServiceRoot",
                 "RedfishVersion": "1.9.0"})");
  start();
  EXPECT_EQ(probe(), 0);
  EXPECT_EQ(type, kOrvaneTypeUnknown);
  ASSERT_TRUE(run->lastFailure().has_value());
  EXPECT_EQ(run->lastFailure()->cause, "its Redfish service has no systems");
}

TEST_F(OrvaneTypeAcquireTest, NameThatDoesNotResolveFails) {
  script->on("GET /redfish/v1/", failureOf(FailureKind::kNameNotResolved));
  start();
  EXPECT_NE(probe(), 0);
  EXPECT_EQ(run->lastFailure()->kind, FailureKind::kNameNotResolved);
}

TEST_F(OrvaneTypeAcquireTest, UntrustedCertificateFails) {
  script->on("GET /redfish/v1/", failureOf(FailureKind::kCertificate));
  start();
  EXPECT_NE(probe(), 0);
}

TEST_F(OrvaneTypeAcquireTest, SilenceFails) {
  script->on("GET /redfish/v1/", failureOf(FailureKind::kUnreachable));
  start();
  EXPECT_NE(probe(), 0);
}

TEST_F(OrvaneTypeAcquireTest, FailureLeavesTheTypeAsItWas) {
  script->on("GET /redfish/v1/", failureOf(FailureKind::kCertificate));
  start();
  type = kOrvaneType2;
  EXPECT_NE(probe(), 0);
  EXPECT_EQ(type, kOrvaneType2);
}

TEST_F(OrvaneTypeAcquireTest, WithoutAPoolItFails) {
  run.reset();
  EXPECT_NE(probe(), 0);
}

TEST_F(OrvaneTypeAcquireTest, UnknownHandleFails) {
  start();
  connection.service = 9;
  EXPECT_NE(probe(), 0);
}

TEST_F(OrvaneTypeAcquireTest, TargetThatNobodyAsksPasses) {
  connection.service = run::kNoService;
  EXPECT_EQ(probe(), 0);
  EXPECT_EQ(type, kOrvaneTypeDravik);
  EXPECT_TRUE(script->requests.empty());
}

}  // namespace
}  // namespace Tarvex::Agentless
