#pragma once

#include <cstdint>
#include <vector>

#include "suite/redfish/graph/graph.h"

namespace redfish {

// Which systems a service has, and which chassis and managers belong to one
// of them: pure functions of what the graph holds so far. The crawl uses them
// to decide what to read next, the mapping to decide what to report. Graph
// pointers obey the graph's rules.

/// The service root; null before it was read.
const Resource* serviceRoot(const Graph& graph);

/// The nodes of the service: members of Systems in the order served, without
/// those that are no machine of their own (SystemType Virtual, OS,
/// VirtuallyPartitioned, DPU, Composed), unless that leaves none. A member
/// that does not exist or cannot be read keeps its place; one that was never
/// asked for is null.
std::vector<const Resource*> eligibleSystems(const Graph& graph);

/// One node with what belongs to it. Every resource in it has been read.
struct Node {
  /// The node's system; null when there is none at the index, or when it was
  /// not read.
  const Resource* system = nullptr;
  bool alone = false;  ///< The only node of its service.
  /// Chassis of the node in order: its own (Links.Chassis of the system, else
  /// those that name it, else all when it is alone), then those below them.
  std::vector<const Resource*> chassis;
  /// Managers of the node: Links.ManagedBy of the system, else of its
  /// chassis, else the service's own.
  std::vector<const Resource*> managers;
};

/// The node at a 0-based index.
Node nodeAt(const Graph& graph, std::uint16_t nodeIndex);

/// Where a node's fans, or its power supplies, are to be looked for: its
/// chassis first, then what the CooledBy (PoweredBy) links of the system and
/// its chassis and the Fans (PowerSupplies) links of the chassis name: a
/// chassis, a part, or a place in a document such as
/// "/redfish/v1/Chassis/E/Thermal#/Fans/0". The order is that of the rows; no
/// place comes twice.
std::vector<Uri> coolingSources(const Node& node);
std::vector<Uri> powerSources(const Node& node);

/// The chassis that hold the node's own, nearest first: the places to look
/// for fans and supplies, one at a time, when the sources above have none.
/// Ends at a chassis that was not read.
std::vector<Uri> enclosingChassis(const Graph& graph, const Node& node);

}  // namespace redfish
