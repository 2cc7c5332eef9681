#include "suite/devhealth/health/node_scope.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/server.h"

namespace devhealth {
namespace {

// Blades 1 and 2 in an enclosure; each blade has a manager of its own.
Server blades() {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") +
                R"(], "ManagedBy": [)" + linkTo("Managers/1") + "]}}");
  server.addNode("2");
  server.put("Systems/2", R"({"Links": {"Chassis": [)" + linkTo("Chassis/2") +
                              R"(], "ManagedBy": [)" + linkTo("Managers/2") +
                              "]}}");
  const std::string inEnclosure =
      R"(, "ContainedBy": )" + linkTo("Chassis/E") + "}}";
  server.put("Chassis/1", R"({"Links": {"ComputerSystems": [)" +
                              linkTo("Systems/1") + "]" + inEnclosure);
  server.put("Chassis/2", R"({"Links": {"ComputerSystems": [)" +
                              linkTo("Systems/2") + "]" + inEnclosure);
  server.put("Chassis/E", "{}");
  server.put("Chassis/Card",
             R"({"Links": {"ContainedBy": )" + linkTo("Chassis/2") + "}}");
  server.put("Chassis/Fan",
             R"({"Links": {"ContainedBy": )" + linkTo("Chassis/E") + "}}");
  std::string members;
  for (const std::string name : {"1", "2", "E", "Card", "Fan"}) {
    members += (members.empty() ? "" : ",") + linkTo("Chassis/" + name);
  }
  server.put("Chassis", R"({"Members": [)" + members + "]}");
  server.put("Managers/2", "{}");
  return server;
}

bool holds(const Server& server, const std::string& path) {
  return NodeScope(server.graph(), server.topology(), server.node())
      .holds("/redfish/v1/" + path);
}

TEST(NodeScope, HoldsTheNodesOwn) {
  const Server server = blades();
  EXPECT_TRUE(holds(server, "Systems/1"));
  EXPECT_TRUE(holds(server, "Systems/1/Memory/D1"));
  EXPECT_TRUE(holds(server, "Chassis/1/Sensors/X"));
  EXPECT_TRUE(holds(server, "Managers/1"));
}

TEST(NodeScope, LeavesOutOtherNodes) {
  const Server server = blades();
  EXPECT_FALSE(holds(server, "Systems/2"));
  EXPECT_FALSE(holds(server, "Systems/2/Memory/D1"));
  EXPECT_FALSE(holds(server, "Chassis/2/PCIeDevices/1"));
  EXPECT_FALSE(holds(server, "Managers/2/EthernetInterfaces/1"));
}

TEST(NodeScope, LeavesOutCardsOfOtherNodes) {
  EXPECT_FALSE(holds(blades(), "Chassis/Card/PCIeDevices/1"));
}

TEST(NodeScope, HoldsWhatTheNodesShare) {
  const Server server = blades();
  EXPECT_TRUE(holds(server, "Chassis/E/Thermal"));
  EXPECT_TRUE(holds(server, "Chassis/Fan"));
  EXPECT_TRUE(holds(server, "UpdateService"));
}

TEST(NodeScope, ComparesWholeSegments) {
  EXPECT_TRUE(holds(blades(), "Systems/22"));
}

TEST(NodeScope, EnclosureThatAnotherNodeNamesIsShared) {
  Server server = blades();
  server.put("Systems/2", R"({"Links": {"Chassis": [)" + linkTo("Chassis/2") +
                              "," + linkTo("Chassis/E") + "]}}");
  EXPECT_TRUE(holds(server, "Chassis/E/Thermal"));
  EXPECT_TRUE(holds(server, "Chassis/Fan"));
  EXPECT_FALSE(holds(server, "Chassis/Card/PCIeDevices/1"));
}

TEST(NodeScope, LeavesOutThePartsOfOtherNodes) {
  Server server = blades();
  server.addNode("Board");
  for (const std::string name : {"1", "2"}) {
    server.put("Systems/" + name, R"({"Boot": {}, "Links": {"Chassis": [)" +
                                      linkTo("Chassis/" + name) + "]}}");
  }
  server.put("Systems/Board",
             R"({"Links": {"Chassis": [)" + linkTo("Chassis/2") + "]}}");
  EXPECT_FALSE(holds(server, "Systems/Board/Processors/GPU1"));
  server.put("Systems/Board",
             R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  EXPECT_TRUE(holds(server, "Systems/Board/Processors/GPU1"));
}

TEST(NodeScope, LoneNodeHoldsEverything) {
  const Server server;
  EXPECT_TRUE(holds(server, "Systems/2"));
  EXPECT_TRUE(holds(server, "Chassis/9"));
}

}  // namespace
}  // namespace devhealth
