#pragma once

#include <cstdint>
#include <vector>

#include "suite/redfish/graph.h"

namespace redfish {

// Which systems a service has, and which chassis and managers belong to one
// of them: pure functions of what the graph holds so far. The crawl uses them
// to decide what to read next, the mapping to decide what to report. Graph
// pointers obey the graph's rules.

/// The nodes of the service: members of Systems in the order served, without
/// those that are no machine of their own (SystemType Virtual, OS,
/// VirtuallyPartitioned, DPU, Composed), unless that leaves none. A member
/// that answered 404 or cannot be read keeps its place.
std::vector<const Resource*> eligibleSystems(const Graph& graph);

/// One node with what belongs to it.
struct Node {
  const Resource* system = nullptr;
  bool alone = false;  ///< The only node of its service.
  /// Chassis of the node in order: its own (Links.Chassis of the system, else
  /// those that name it, else all when it is alone), then those below them.
  std::vector<const Resource*> chassis;
  /// Managers of the node: Links.ManagedBy of the system, else of its
  /// chassis, else the service's own.
  std::vector<const Resource*> managers;
};

/// The node at a 0-based index; its system is null when there is none there.
Node nodeAt(const Graph& graph, std::uint16_t nodeIndex);

/// Where a node's fans, or its power supplies, are to be looked for: chassis
/// documents (the node's own chassis first), and links to a chassis' part such
/// as "/redfish/v1/Chassis/E/Thermal#/Fans/0". Order is the row order.
/// `climb` adds the chassis that hold the node's own, for nodes whose own
/// chassis have none.
std::vector<Uri> coolingSources(const Graph& graph, const Node& node,
                                bool climb);
std::vector<Uri> powerSources(const Graph& graph, const Node& node, bool climb);

}  // namespace redfish
