#include "suite/connection/service_nodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "suite/redfish/recorded/directory_transport.h"

namespace connection {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

TEST(ReadNodes, TellsEachNode) {
  redfish::Service service(
      {}, redfish::makeDirectoryTransport(SAMPLES "/two-node"));
  const ServiceNodes found = readNodes(service, 0, 0);
  EXPECT_FALSE(found.failure);
  ASSERT_THAT(found.nodes, SizeIs(2));
  EXPECT_NE(found.nodes[0].uri, "");
  EXPECT_NE(found.nodes[0].uuid, "");
  EXPECT_NE(found.nodes[0].uuid, found.nodes[1].uuid);
}

TEST(ReadNodes, FailureIsTold) {
  redfish::Service service({},
                           redfish::makeDirectoryTransport(SAMPLES "/none"));
  const ServiceNodes found = readNodes(service, 0, 0);
  EXPECT_TRUE(found.failure);
  EXPECT_THAT(found.nodes, SizeIs(0));
}

// A service that has been read; its root states this UUID.
constexpr char kTwoNodeUuid[] = "7a40e9b3-18f6-4d2c-8e57-d16c2f90ab48";

class Foreign : public testing::Test {
 protected:
  Foreign() { readNodes(service_, 0, 0); }

  redfish::Service service_{
      {}, redfish::makeDirectoryTransport(SAMPLES "/two-node")};
};

TEST_F(Foreign, TheNamedServiceIsNot) {
  EXPECT_FALSE(checkServiceUuid(service_, kTwoNodeUuid));
}

TEST_F(Foreign, AnyServiceWillDoWhereNoneIsNamed) {
  EXPECT_FALSE(checkServiceUuid(service_, ""));
}

TEST_F(Foreign, AnotherUuidIsToldWithTheRemedy) {
  const auto failure =
      checkServiceUuid(service_, "01112233-4455-6677-8899-aabbccddeeff");
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->kind, base::FailureKind::kNotRedfish);
  EXPECT_THAT(failure->cause, HasSubstr("UUID"));
  EXPECT_THAT(failure->remedy, HasSubstr("[inband]"));
}

}  // namespace
}  // namespace connection
