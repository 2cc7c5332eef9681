#pragma once

#include <cstdint>
#include <vector>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/nodes.h"

namespace redfish {

// Which chassis and managers belong to a node: pure functions of what the
// graph holds so far. The crawl uses them to decide what to read next, the
// mapping to decide what to report. Graph pointers obey the graph's rules.

/// One node with what belongs to it. Every resource in it has been read.
struct Node {
  /// The node's own system; null when there is none at the index, or when it
  /// was not read.
  const Resource* system = nullptr;
  /// That system, then the systems that are its parts: what they list belongs
  /// to the node, and their health counts like that of its own. Empty without
  /// a system of its own.
  std::vector<const Resource*> systems;
  bool alone = false;  ///< The only node of its service.
  /// Chassis of the node in order: for each system those that it links and
  /// those that link it, else those told apart by their Ids; then those below
  /// them.
  std::vector<const Resource*> chassis;
  /// Whether a link leads to one of the chassis. False: the whole list may
  /// change while there are still chassis to be read.
  bool chassisLinked = false;
  /// Managers of the node: those that its systems link, else its chassis, else
  /// the service's own, else, when no node links any, all.
  std::vector<const Resource*> managers;
};

/// The node at a 0-based index of `nodesOf`.
Node nodeAt(const Graph& graph, std::uint16_t nodeIndex);

/// Where a node's fans, or its power supplies, are to be looked for: its
/// chassis first, then what the CooledBy (PoweredBy) links of its systems and
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
