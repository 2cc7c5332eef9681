#include "syshealth/host/target_selection.h"

#include <gmock/gmock.h>

#include <limits>

#include "syshealth/host/connect_info.h"
#include "tests/fakes/suite_test.h"

namespace {

using Tarvex::TarvexConnection::ConnectionInfo;
using testing::ElementsAre;
using testing::IsEmpty;

class SelectTargets : public fakes::SuiteTest {
 protected:
  TargetSelection select(std::int32_t mode) {
    return selectTargets(mode, targets);
  }

  std::vector<std::string> picked() const {
    std::vector<std::string> addresses;
    for (const ConnectionInfo& info : targets) {
      addresses.push_back(info.address);
    }
    return addresses;
  }

  std::vector<ConnectionInfo> targets = {target("a", 0), target("b", 1),
                                         target("c", 1)};
};

TEST_F(SelectTargets, OutOfBandPicksTheFirst) {
  EXPECT_EQ(select(kConnectModeOutOfBand), TargetSelection::kPicked);
  EXPECT_THAT(picked(), ElementsAre("a"));
}

TEST_F(SelectTargets, OutOfBandDoesNotReadNode) {
  giveNode(99);
  EXPECT_EQ(select(kConnectModeOutOfBand), TargetSelection::kPicked);
  EXPECT_THAT(fakes::journal(), IsEmpty());
}

TEST_F(SelectTargets, InBandWithoutNodePicksAll) {
  EXPECT_EQ(select(kConnectModeInBand), TargetSelection::kPicked);
  EXPECT_THAT(picked(), ElementsAre("a", "b", "c"));
  EXPECT_THAT(fakes::journal(),
              ElementsAre("call ArgParser::GetInstance()",
                          "call ArgParser::GetValue(node, integer 0)"));
}

TEST_F(SelectTargets, InBandWithoutParserPicksAll) {
  giveNode(99);
  fakes::script().parserFetches = 0;
  EXPECT_EQ(select(kConnectModeInBand), TargetSelection::kPicked);
  EXPECT_THAT(picked(), ElementsAre("a", "b", "c"));
}

TEST_F(SelectTargets, NodePicksEveryTargetOfThatNode) {
  giveNode(2);
  EXPECT_EQ(select(kConnectModeInBand), TargetSelection::kPicked);
  EXPECT_THAT(picked(), ElementsAre("b", "c"));
}

TEST_F(SelectTargets, NodeThatNoTargetHasPicksNone) {
  giveNode(3);
  EXPECT_EQ(select(kConnectModeInBand), TargetSelection::kPicked);
  EXPECT_THAT(picked(), IsEmpty());
}

TEST_F(SelectTargets, NodeOutsideTheListIsInvalid) {
  for (const int node : {0, -1, 4, std::numeric_limits<int>::min(),
                         std::numeric_limits<int>::max()}) {
    giveNode(node);
    EXPECT_EQ(select(kConnectModeInBand), TargetSelection::kInvalidNode)
        << node;
    EXPECT_THAT(picked(), ElementsAre("a", "b", "c"));
  }
}

TEST_F(SelectTargets, HighestNodeIndexIsNotTakenForANegativeNode) {
  targets = {target("a", 65535)};
  giveNode(0);
  EXPECT_EQ(select(kConnectModeInBand), TargetSelection::kInvalidNode);
}

TEST_F(SelectTargets, OtherModesAreUnsupported) {
  for (const std::int32_t mode : {kConnectModeEsxi + 0, 0, 3, 5, -1}) {
    EXPECT_EQ(select(mode), TargetSelection::kUnsupportedMode) << mode;
  }
  EXPECT_THAT(fakes::journal(), IsEmpty());
}

}  // namespace
