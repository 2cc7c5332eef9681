#include "suite/redfish/graph/service_conditions.h"

#include <gtest/gtest.h>

#include "tests/suite/graph_of.h"

namespace redfish {
namespace {

constexpr const char* kRoot = R"({
    "ServiceConditions": {"@odata.id": "/redfish/v1/ServiceConditions"}})";
constexpr const char* kHealthy = R"({"Status": {"HealthRollup": "OK"}})";

std::string conditions(const std::string& rollup, const std::string& entries) {
  return R"({"HealthRollup": ")" + rollup + R"(", "Conditions": [)" + entries +
         "]}";
}

// A service with one system, chassis and manager, whose conditions and
// holders are as given.
Graph serviceOf(const std::string& document, const char* system = kHealthy,
                const char* chassis = kHealthy,
                const char* manager = kHealthy) {
  return graphOf({{"/redfish/v1", kRoot},
                  {"/redfish/v1/ServiceConditions", document},
                  {"/redfish/v1/Systems/1", system},
                  {"/redfish/v1/Chassis/1", chassis},
                  {"/redfish/v1/Managers/1", manager}});
}

bool suffices(const Graph& graph, bool alone = true) {
  Node node;
  node.system = graph.find("/redfish/v1/Systems/1");
  node.systems = {node.system};
  node.alone = alone;
  node.chassis = {graph.find("/redfish/v1/Chassis/1")};
  node.managers = {graph.find("/redfish/v1/Managers/1")};
  return serviceConditionsSuffice(graph, node);
}

constexpr const char* kWarning = R"({"Severity": "Warning"})";
constexpr const char* kCritical = R"({"Severity": "Critical"})";

TEST(ServiceConditionsSuffice, EmptyListWithGoodHealthDoes) {
  EXPECT_TRUE(suffices(serviceOf(conditions("OK", ""))));
}

TEST(ServiceConditionsSuffice, RollupEqualToTheWorstListedDoes) {
  EXPECT_TRUE(suffices(serviceOf(
      conditions("Critical", std::string(kWarning) + "," + kCritical))));
}

TEST(ServiceConditionsSuffice, RollupWorseThanTheListedDoesNot) {
  EXPECT_FALSE(suffices(serviceOf(conditions("Critical", kWarning))));
}

TEST(ServiceConditionsSuffice, RollupBetterThanTheListedDoesNot) {
  EXPECT_FALSE(suffices(serviceOf(conditions("OK", kWarning))));
}

TEST(ServiceConditionsSuffice, ListWithoutRollupDoesNot) {
  EXPECT_FALSE(suffices(serviceOf(R"({"Conditions": []})")));
}

TEST(ServiceConditionsSuffice, StubWithoutListDoesNot) {
  EXPECT_FALSE(suffices(serviceOf(R"({"HealthRollup": "OK"})")));
}

TEST(ServiceConditionsSuffice, ConditionWithoutSeverityProvesNothing) {
  EXPECT_FALSE(suffices(serviceOf(conditions("Warning", "{}"))));
}

TEST(ServiceConditionsSuffice, EntriesThatAreNoObjectsAreSkipped) {
  EXPECT_TRUE(suffices(serviceOf(conditions("OK", "null, 7, \"x\""))));
}

TEST(ServiceConditionsSuffice, UnreadListDoesNot) {
  EXPECT_FALSE(suffices(serviceOf(std::string(kBroken))));
}

TEST(ServiceConditionsSuffice, RootWithoutTheLinkDoesNot) {
  Graph graph = serviceOf(conditions("OK", ""));
  put(graph, "/redfish/v1", "{}");
  EXPECT_FALSE(suffices(graph));
}

TEST(ServiceConditionsSuffice, SystemWithWorseRollupContradicts) {
  EXPECT_FALSE(suffices(serviceOf(
      conditions("OK", ""), R"({"Status": {"HealthRollup": "Warning"}})")));
}

TEST(ServiceConditionsSuffice, ChassisWithWorseHealthContradicts) {
  EXPECT_FALSE(suffices(serviceOf(
      conditions("Warning", kWarning), kHealthy,
      R"({"Status": {"Health": "Critical", "HealthRollup": "OK"}})")));
}

TEST(ServiceConditionsSuffice, ManagerWithWorseRollupContradicts) {
  EXPECT_FALSE(
      suffices(serviceOf(conditions("OK", ""), kHealthy, kHealthy,
                         R"({"Status": {"HealthRollup": "Critical"}})")));
}

TEST(ServiceConditionsSuffice, PartWithWorseRollupContradicts) {
  Graph graph = serviceOf(conditions("OK", ""));
  put(graph, "/redfish/v1/Systems/Board",
      R"({"Status": {"HealthRollup": "Warning"}})");
  Node node;
  node.system = graph.find("/redfish/v1/Systems/1");
  node.systems = {node.system, graph.find("/redfish/v1/Systems/Board")};
  node.alone = true;
  EXPECT_FALSE(serviceConditionsSuffice(graph, node));
}

TEST(ServiceConditionsSuffice, DegradedHolderWithoutHealthContradicts) {
  EXPECT_FALSE(suffices(
      serviceOf(conditions("OK", ""), R"({"Status": {"State": "Degraded"}})")));
}

TEST(ServiceConditionsSuffice, HolderWithoutHealthContradictsNothing) {
  EXPECT_TRUE(suffices(serviceOf(conditions("OK", ""), "{}", "{}", "{}")));
}

TEST(ServiceConditionsSuffice, NodeWithoutSystemIsNotAnswered) {
  const Graph graph = serviceOf(conditions("OK", ""));
  EXPECT_FALSE(serviceConditionsSuffice(graph, Node{}));
}

constexpr const char* kWarned = R"({"Status": {"HealthRollup": "Warning"}})";

std::string warningFrom(const std::string& origin) {
  return R"({"Severity": "Warning", "OriginOfCondition": {"@odata.id": ")" +
         origin + R"("}})";
}

TEST(ServiceConditionsSuffice, OtherNodesConditionExplainsNothingHere) {
  EXPECT_FALSE(suffices(
      serviceOf(
          conditions("Warning", warningFrom("/redfish/v1/Systems/2/Memory/1")),
          kWarned),
      false));
}

TEST(ServiceConditionsSuffice, OwnConditionExplainsOnAServiceOfSeveralNodes) {
  EXPECT_TRUE(suffices(
      serviceOf(
          conditions("Warning", warningFrom("/redfish/v1/Systems/1/Memory/1")),
          kWarned),
      false));
}

TEST(ServiceConditionsSuffice, NeighbourWithALongerNameIsNotThisNode) {
  EXPECT_FALSE(suffices(
      serviceOf(
          conditions("Warning", warningFrom("/redfish/v1/Systems/11/Memory/1")),
          kWarned),
      false));
}

TEST(ServiceConditionsSuffice, HealthyNodeIsAnsweredWhateverTheOthersHave) {
  EXPECT_TRUE(
      suffices(serviceOf(conditions("Critical", R"({"Severity": "Critical",
          "OriginOfCondition": {"@odata.id": "/redfish/v1/Systems/2"}})")),
               false));
}

}  // namespace
}  // namespace redfish
