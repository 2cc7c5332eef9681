#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// What concerns one node of a service: everything except the other nodes'
/// systems and the chassis and managers that serve only those. An enclosure of
/// several nodes concerns them all.
class NodeScope {
 public:
  /// `topology`: of the graph; needed only here.
  NodeScope(const redfish::Graph& graph, const redfish::Topology& topology,
            const redfish::Node& node);

  /// Whether the document of a key concerns the node.
  bool holds(std::string_view document) const;

 private:
  std::unordered_set<std::string> otherHolders_;  ///< Holders of other nodes.
};

}  // namespace devhealth
