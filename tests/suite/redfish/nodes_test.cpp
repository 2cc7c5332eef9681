// Which systems are nodes, which are parts of one, and how nodes are numbered.
#include "suite/redfish/graph/nodes.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/suite/graph_of.h"

namespace redfish {
namespace {

using Names = std::vector<std::string>;

constexpr const char* kWhole = R"({"Boot": {}})";
constexpr const char* kBoard = R"({"Name": "Board"})";

std::string linkTo(const std::string& path) {
  return R"({"@odata.id": "/redfish/v1/)" + path + R"("})";
}

std::string listOf(const Names& paths) {
  std::string list;
  for (const std::string& path : paths) {
    list += (list.empty() ? "" : ", ") + linkTo(path);
  }
  return "[" + list + "]";
}

std::string collectionOf(const Names& paths) {
  return R"({"Members": )" + listOf(paths) + "}";
}

// A service with these systems, in the order given, and these chassis.
Graph serviceOf(
    const std::vector<std::pair<std::string, std::string>>& systems,
    const std::vector<std::pair<std::string, std::string>>& chassis = {}) {
  Graph graph;
  put(graph, "/redfish/v1",
      R"({"Systems": )" + linkTo("Systems") + R"(, "Chassis": )" +
          linkTo("Chassis") + "}");
  Names names;
  for (const auto& [name, body] : systems) {
    names.push_back("Systems/" + name);
    put(graph, "/redfish/v1/Systems/" + name, body);
  }
  put(graph, "/redfish/v1/Systems", collectionOf(names));
  names.clear();
  for (const auto& [name, body] : chassis) {
    names.push_back("Chassis/" + name);
    put(graph, "/redfish/v1/Chassis/" + name, body);
  }
  put(graph, "/redfish/v1/Chassis", collectionOf(names));
  return graph;
}

// The last segments of the systems of each node: "Host+Board", "Other".
Names nodes(const Graph& graph) {
  Names names;
  for (const NodeSystems& node : nodesOf(graph)) {
    std::string name;
    for (const Resource* system : node) {
      name += (name.empty() ? "" : "+") +
              std::string(system == nullptr ? "?" : system->uri.lastSegment());
    }
    names.push_back(name);
  }
  return names;
}

std::string naming(const Names& systems) {
  return R"({"Links": {"ComputerSystems": )" + listOf(systems) + "}}";
}

TEST(NodesOf, OrderIsThatOfTheIdsNotThatServed) {
  EXPECT_EQ(nodes(serviceOf({{"c", R"({"Id": "Blade10"})"},
                             {"a", R"({"Id": "blade2"})"},
                             {"b", R"({"Id": "Blade1"})"}})),
            (Names{"b", "a", "c"}));
}

TEST(NodesOf, SystemWithoutIdIsOrderedByItsLink) {
  EXPECT_EQ(nodes(serviceOf({{"Node3", "{}"},
                             {"x", R"({"Id": "Node2"})"},
                             {"Node1", std::string(kBroken)}})),
            (Names{"Node1", "x", "Node3"}));
}

TEST(NodesOf, MemberThatDoesNotExistKeepsItsNumber) {
  EXPECT_EQ(nodes(serviceOf({{"2", "{}"}, {"1", std::string(kMissing)}})),
            (Names{"1", "2"}));
}

TEST(NodesOf, SystemsInsideOthersAreLeftOut) {
  for (const char* type :
       {"Virtual", "OS", "VirtuallyPartitioned", "DPU", "Composed"}) {
    EXPECT_EQ(nodes(serviceOf({{"Host", R"({"SystemType": "Physical"})"},
                               {"Inner", std::string(R"({"SystemType": ")") +
                                             type + "\"}"}})),
              Names{"Host"})
        << type;
  }
}

TEST(NodesOf, ComposedMachineAloneIsANode) {
  EXPECT_EQ(nodes(serviceOf({{"1", R"({"SystemType": "Composed"})"}})),
            Names{"1"});
}

TEST(NodesOf, BoardBesideOneMachineIsItsPart) {
  EXPECT_EQ(nodes(serviceOf({{"Baseboard", kBoard}, {"Host", kWhole}})),
            Names{"Host+Baseboard"});
}

TEST(NodesOf, EachSignOfAMachineMakesASystemWhole) {
  for (const char* sign :
       {R"({"Boot": {}})", R"({"Actions": {"#ComputerSystem.Reset": {}}})",
        R"({"BiosVersion": "1.4"})",
        R"({"Bios": {"@odata.id": "/redfish/v1/Systems/B/Bios"}})"}) {
    EXPECT_EQ(nodes(serviceOf({{"A", kWhole}, {"B", sign}})), (Names{"A", "B"}))
        << sign;
  }
}

TEST(NodesOf, EmptySignsMakeNoMachine) {
  for (const char* none :
       {R"({"Boot": null})", R"({"Actions": {}})", R"({"BiosVersion": ""})",
        R"({"BiosVersion": "N/A"})", R"({"Bios": null})"}) {
    EXPECT_EQ(nodes(serviceOf({{"A", kWhole}, {"B", none}})), Names{"A+B"})
        << none;
  }
}

TEST(NodesOf, SystemsThatAreAllWithoutSignsAreNodes) {
  EXPECT_EQ(nodes(serviceOf({{"A", kBoard}, {"B", kBoard}})),
            (Names{"A", "B"}));
}

TEST(NodesOf, BoardBesideSeveralMachinesGoesByItsChassis) {
  const std::string inShared =
      R"({"Links": {"Chassis": )" + listOf({"Chassis/Shared"}) + "}}";
  EXPECT_EQ(nodes(serviceOf({{"A", kWhole}, {"B", kWhole}, {"G", inShared}},
                            {{"Shared", naming({"Systems/B"})}})),
            (Names{"A", "B+G"}));
}

TEST(NodesOf, BoardThatBelongsToSeveralOrNoneIsANode) {
  EXPECT_EQ(nodes(serviceOf(
                {{"A", kWhole}, {"B", kWhole}, {"G", kBoard}},
                {{"Box", naming({"Systems/A", "Systems/B", "Systems/G"})}})),
            (Names{"A", "B", "G"}));
  EXPECT_EQ(nodes(serviceOf({{"A", kWhole}, {"B", kWhole}, {"G", kBoard}})),
            (Names{"A", "B", "G"}));
}

TEST(NodesOf, SharedChassisThatDoesNotExistTiesNothing) {
  const std::string lost =
      R"({"Boot": {}, "Links": {"Chassis": )" + listOf({"Chassis/Lost"}) + "}}";
  const std::string board =
      R"({"Links": {"Chassis": )" + listOf({"Chassis/Lost"}) + "}}";
  EXPECT_EQ(nodes(serviceOf({{"A", lost}, {"B", kWhole}, {"G", board}})),
            (Names{"A", "B", "G"}));
}

TEST(PartsDependOnChassis, OnlyWhereABoardHasSeveralMachinesBesideIt) {
  EXPECT_TRUE(partsDependOnChassis(
      serviceOf({{"A", kWhole}, {"B", kWhole}, {"G", kBoard}})));
  EXPECT_FALSE(partsDependOnChassis(serviceOf({{"A", kWhole}, {"G", kBoard}})));
  EXPECT_FALSE(partsDependOnChassis(serviceOf({{"A", kWhole}, {"B", kWhole}})));
  EXPECT_FALSE(partsDependOnChassis(
      serviceOf({{"A", kWhole}, {"B", std::string(kBroken)}})));
}

TEST(MembersOfRoot, AreThoseThatWereRead) {
  const Graph graph =
      serviceOf({}, {{"A", "{}"}, {"B", std::string(kBroken)}, {"C", "{}"}});
  EXPECT_EQ(membersOfRoot(graph, "Chassis").size(), 2U);
  EXPECT_TRUE(membersOfRoot(graph, "Managers").empty());
  EXPECT_TRUE(membersOfRoot(Graph(), "Chassis").empty());
}

}  // namespace
}  // namespace redfish
