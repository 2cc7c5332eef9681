// Which chassis and managers belong to a node.
#include "suite/redfish/graph/topology.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "suite/redfish/graph/containment.h"
#include "tests/suite/graph_of.h"

namespace redfish {
namespace {

using Names = std::vector<std::string>;

// A service that is built resource by resource: "Systems/A", "Chassis/1".
class TopologyOf : public testing::Test {
 protected:
  void SetUp() override { add("", R"("Id": "Root")"); }

  // Adds a resource: its members without the braces. Members of Systems,
  // Chassis and Managers are listed in the order in which they are added.
  void add(const std::string& path, const std::string& members = "") {
    put(graph_, "/redfish/v1" + (path.empty() ? "" : "/" + path),
        "{" + members + "}");
    const std::string collection = path.substr(0, path.find('/'));
    if (!path.empty()) {
      lists_[collection].push_back(path);
      std::string list;
      for (const std::string& member : lists_[collection]) {
        list += (list.empty() ? "" : ", ") + link(member);
      }
      put(graph_, "/redfish/v1/" + collection,
          R"({"Members": [)" + list + "]}");
      put(graph_, "/redfish/v1",
          R"({"Systems": )" + link("Systems") + R"(, "Chassis": )" +
              link("Chassis") + R"(, "Managers": )" + link("Managers") + root_ +
              "}");
    }
  }

  static std::string link(const std::string& path) {
    return R"({"@odata.id": "/redfish/v1/)" + path + R"("})";
  }

  // "Links": {NAME: [...]}
  static std::string links(const std::string& name, const Names& paths) {
    std::string list;
    for (const std::string& path : paths) {
      list += (list.empty() ? "" : ", ") + link(path);
    }
    return R"("Links": {")" + name + R"(": [)" + list + "]}";
  }

  static std::string id(const std::string& id) {
    return R"("Id": ")" + id + '"';
  }

  Names names(const std::vector<const Resource*>& resources) const {
    Names names;
    for (const Resource* resource : resources) {
      names.emplace_back(resource->uri.lastSegment());
    }
    return names;
  }

  Names chassis(std::uint16_t node = 0) const {
    return names(Topology(graph_).node(node).chassis);
  }
  Names managers(std::uint16_t node = 0) const {
    return names(Topology(graph_).node(node).managers);
  }

  Graph graph_;
  std::map<std::string, Names> lists_;
  std::string root_;  // Further members of the service root.
};

TEST_F(TopologyOf, LinksOfBothDirectionsCount) {
  add("Systems/S", links("Chassis", {"Chassis/Board"}));
  add("Chassis/Box", links("ComputerSystems", {"Systems/S"}));
  add("Chassis/Board");
  add("Chassis/Stranger");
  EXPECT_EQ(chassis(), (Names{"Board", "Box"}));
  EXPECT_TRUE(Topology(graph_).node(0).chassisLinked);
}

TEST_F(TopologyOf, KnownNodeIsThatOfTheGraphAsItIs) {
  const KnownNodes nodes(graph_);
  EXPECT_EQ(nodes.at(0).system, nullptr);
  add("Systems/S");
  add("Chassis/A");
  EXPECT_NE(nodes.at(0).system, nullptr);
  EXPECT_EQ(nodes.at(1).system, nullptr);
  EXPECT_EQ(names(nodes.at(0).chassis), Names{"A"});
  const std::string box = graph_.resources().rbegin()->first;
  ASSERT_NE(box.find("Systems/S"), std::string::npos);
  graph_.edit(box)->state = ResourceState::kAbsent;
  EXPECT_EQ(nodes.at(0).system, nullptr);
}

TEST_F(TopologyOf, LinksThatLeadNowhereDoNotCount) {
  add("Systems/S", links("Chassis", {"Chassis/Lost"}));
  add("Chassis/Box");
  EXPECT_EQ(chassis(), Names{"Box"});
  EXPECT_FALSE(Topology(graph_).node(0).chassisLinked);
}

TEST_F(TopologyOf, OnlyNodeWithoutLinksHasAllChassis) {
  add("Systems/S");
  add("Chassis/A");
  add("Chassis/B");
  EXPECT_EQ(chassis(), (Names{"A", "B"}));
}

TEST_F(TopologyOf, NodesWithoutLinksHaveTheChassisOfTheirIdAndTheShared) {
  add("Systems/S1", id("Blade1"));
  add("Systems/S2", id("Blade2"));
  add("Chassis/E", id("Enclosure"));
  add("Chassis/C2", id("Blade2"));
  add("Chassis/C1", id("Blade1"));
  add("Chassis/M", id("Mezz"));
  EXPECT_EQ(chassis(0), (Names{"C1", "E", "M"}));
  EXPECT_EQ(chassis(1), (Names{"C2", "E", "M"}));
}

TEST_F(TopologyOf, ChassisOfASystemThatIsNoNodeIsNotShared) {
  add("Systems/S1", id("Blade1"));
  add("Systems/S2", id("Blade2"));
  add("Systems/Dpu", id("Dpu") + R"(, "SystemType": "DPU")");
  add("Chassis/C1", id("Blade1"));
  add("Chassis/D1", id("Dpu"));
  add("Chassis/D2",
      id("Other") + ", " + links("ComputerSystems", {"Systems/Dpu"}));
  EXPECT_EQ(chassis(0), Names{"C1"});
  EXPECT_EQ(chassis(1), Names{});
}

TEST_F(TopologyOf, NodeWithLinksHasNoSharedChassis) {
  add("Systems/S1", id("1") + ", " + links("Chassis", {"Chassis/C1"}));
  add("Systems/S2", id("2"));
  add("Chassis/C1", id("C1"));
  add("Chassis/E", id("E"));
  EXPECT_EQ(chassis(0), Names{"C1"});
}

TEST_F(TopologyOf, ChassisThatNamesBothNodesBelongsToBoth) {
  add("Systems/S1");
  add("Systems/S2");
  add("Chassis/E", links("ComputerSystems", {"Systems/S1", "Systems/S2"}));
  EXPECT_EQ(chassis(0), Names{"E"});
  EXPECT_EQ(chassis(1), Names{"E"});
}

TEST_F(TopologyOf, ChassisInsideBelongToTheNodeByEitherLink) {
  add("Systems/S", links("Chassis", {"Chassis/Box"}));
  add("Chassis/Box", links("Contains", {"Chassis/Riser"}));
  add("Chassis/Riser");
  add("Chassis/Bay",
      R"("Links": {"ContainedBy": )" + link("Chassis/Box") + "}");
  add("Chassis/Card",
      R"("Links": {"ContainedBy": )" + link("Chassis/Riser") + "}");
  EXPECT_EQ(chassis(), (Names{"Box", "Riser", "Bay", "Card"}));
}

TEST_F(TopologyOf, ChassisInsideThatBelongToAnotherNodeStayOut) {
  add("Systems/S1", id("1") + ", " + links("Chassis", {"Chassis/E"}));
  add("Systems/S2", id("Two"));
  add("Chassis/E", links("Contains", {"Chassis/B1", "Chassis/B2", "Chassis/Two",
                                      "Chassis/Dpu"}));
  add("Chassis/B1", links("ComputerSystems", {"Systems/S1", "Systems/S2"}));
  add("Chassis/B2", links("ComputerSystems", {"Systems/S2"}));
  add("Chassis/Two", id("Two"));
  add("Chassis/Dpu", links("ComputerSystems", {"Systems/Card"}));
  EXPECT_EQ(chassis(0), (Names{"E", "B1", "Dpu"}));
}

TEST_F(TopologyOf, PartBringsItsChassisManagersAndLinks) {
  add("Systems/Host", R"("Boot": {}, )" + links("Chassis", {"Chassis/Host"}));
  add("Systems/Board", R"("Links": {"ManagedBy": [)" + link("Managers/B") +
                           R"(], "CooledBy": [)" + link("Chassis/Fans") + "]}");
  add("Chassis/Gpu", links("ComputerSystems", {"Systems/Board"}));
  add("Chassis/Host", links("ManagedBy", {"Managers/H"}));
  add("Managers/H");
  add("Managers/B");
  const Node node = Topology(graph_).node(0);
  EXPECT_TRUE(node.alone);
  EXPECT_EQ(node.system->uri.lastSegment(), "Host");
  EXPECT_EQ(names(node.systems), (Names{"Host", "Board"}));
  EXPECT_EQ(names(node.chassis), (Names{"Host", "Gpu"}));
  EXPECT_EQ(names(node.managers), Names{"B"});
  EXPECT_EQ(coolingSources(node).back().document(), "/redfish/v1/Chassis/Fans");
}

TEST_F(TopologyOf, ManagersOfTheSystemComeBeforeThoseOfItsChassis) {
  add("Systems/S", R"("Links": {"ManagedBy": [)" + link("Managers/S") +
                       R"(], "Chassis": [)" + link("Chassis/C") + "]}");
  add("Chassis/C", links("ManagedBy", {"Managers/C"}));
  add("Managers/C");
  add("Managers/S");
  EXPECT_EQ(managers(), Names{"S"});
}

TEST_F(TopologyOf, ManagersOfTheChassisStandInForTheSystems) {
  add("Systems/S", links("Chassis", {"Chassis/C"}));
  add("Chassis/C", links("ManagedBy", {"Managers/C"}));
  add("Managers/C");
  add("Managers/D");
  EXPECT_EQ(managers(), Names{"C"});
}

TEST_F(TopologyOf, ServicesOwnManagerComesBeforeAllOfThem) {
  root_ =
      R"(, "Links": {"ManagerProvidingService": )" + link("Managers/B") + "}";
  add("Systems/S");
  add("Managers/A");
  add("Managers/B");
  EXPECT_EQ(managers(), Names{"B"});
}

TEST_F(TopologyOf, WithoutAnyLinkAllManagersAreEveryNodes) {
  add("Systems/S1", id("1"));
  add("Systems/S2", id("2"));
  add("Managers/A");
  add("Managers/B");
  EXPECT_EQ(managers(0), (Names{"A", "B"}));
  EXPECT_EQ(managers(1), (Names{"A", "B"}));
}

TEST_F(TopologyOf, ManagersThatAnotherNodeLinksAreNotEverybodys) {
  add("Systems/S1", id("1"));
  add("Systems/S2", id("2") + ", " + links("ManagedBy", {"Managers/B"}));
  add("Managers/A");
  add("Managers/B");
  EXPECT_EQ(managers(0), Names{});
  EXPECT_EQ(managers(1), Names{"B"});
}

TEST_F(TopologyOf, EnclosingChassisComeNearestFirst) {
  add("Systems/S", links("Chassis", {"Chassis/Blade"}));
  add("Chassis/Blade",
      R"("Links": {"ContainedBy": )" + link("Chassis/Sled") + "}");
  add("Chassis/Sled",
      R"("Links": {"ContainedBy": )" + link("Chassis/Rack") + "}");
  add("Chassis/Rack",
      R"("Links": {"ContainedBy": )" + link("Chassis/Room") + "}");
  Names around;
  for (const Uri& place : enclosingChassis(graph_, Topology(graph_).node(0))) {
    around.emplace_back(place.lastSegment());
  }
  EXPECT_EQ(around, (Names{"Sled", "Rack", "Room"}));
}

TEST_F(TopologyOf, ChassisAroundEachOtherEnd) {
  add("Chassis/A", R"("Links": {"ContainedBy": )" + link("Chassis/B") + "}");
  add("Chassis/B", R"("Links": {"ContainedBy": )" + link("Chassis/A") + "}");
  EXPECT_LE(chassisAround(graph_, *graph_.find("/redfish/v1/Chassis/A")).size(),
            static_cast<std::size_t>(kMaxContainment));
}

TEST_F(TopologyOf, NodeWhoseSystemCannotBeReadHasNothing) {
  add("Systems/A");
  put(graph_, "/redfish/v1/Systems/A", kBroken);
  const Node node = Topology(graph_).node(0);
  EXPECT_EQ(node.system, nullptr);
  EXPECT_TRUE(node.systems.empty());
  EXPECT_EQ(Topology(graph_).node(1).system, nullptr);
}

}  // namespace
}  // namespace redfish
