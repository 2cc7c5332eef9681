#pragma once

#include <optional>
#include <set>
#include <string>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

// What the walk over the components of a node has read: pure functions of the
// graph.

/// Adds the document keys of those resources at or below the systems and
/// chassis of a node whose branches (processors, memory, fans, batteries, the
/// inside of storage) were not entered.
void addSkippedOfNode(const redfish::Graph& graph, const redfish::Node& node,
                      std::set<std::string>& skipped);

/// Why the walk is incomplete. Branches that were not entered do not count.
struct WalkFailures {
  /// A list that it needs could not be read, or none of the parts in it.
  std::optional<base::Failure> failure;
  /// A part in one of the lists could not be read.
  std::optional<base::Failure> gap;
};

/// Which branches the walk was to enter although their roll-up is OK.
struct WalkExtent {
  bool thorough = false;  ///< All of them.
  /// Those below the resources of these document keys.
  const std::set<std::string>& unexplained;
};

/// A list whose link is refused could not be read; an array of links, or a
/// collection, lacks what is behind the refused ones.
WalkFailures walkFailures(const redfish::Graph& graph,
                          const redfish::Node& node, const WalkExtent& extent);

}  // namespace devhealth
