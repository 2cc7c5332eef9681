#include "suite/devhealth/health/node_scope.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "suite/redfish/graph/containment.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

using redfish::Graph;
using redfish::Node;
using redfish::Resource;
using redfish::Uri;
using Keys = std::unordered_set<std::string>;

void addKeys(const std::vector<const Resource*>& resources, Keys& keys) {
  for (const Resource* resource : resources) {
    if (resource != nullptr) {
      keys.insert(resource->uri.document());
    }
  }
}

// Everything that belongs to a node, and the chassis around it.
Keys holdersOf(const Graph& graph, const Node& node) {
  Keys keys;
  addKeys(node.systems, keys);
  addKeys(node.chassis, keys);
  addKeys(node.managers, keys);
  for (const Uri& outer : redfish::enclosingChassis(graph, node)) {
    keys.insert(outer.document());
  }
  return keys;
}

// Whether a chassis of another node only stands in something that this node
// has, too: the fan tray of their enclosure, but no card of the other blade.
bool isShared(const Graph& graph, const redfish::Topology& topology,
              const Resource& chassis, const Node& other, const Keys& own) {
  if (topology.isTied(chassis, other.systems)) {
    return false;
  }
  for (const Uri& outer : redfish::chassisAround(graph, chassis)) {
    if (own.count(outer.document()) > 0) {
      return true;
    }
    const Resource* around = graph.findRead(outer.document());
    if (around == nullptr || topology.isTied(*around, other.systems)) {
      return false;
    }
  }
  return false;
}

}  // namespace

NodeScope::NodeScope(const Graph& graph, const redfish::Topology& topology,
                     const Node& node) {
  if (node.alone || node.system == nullptr) {
    return;
  }
  const Keys own = holdersOf(graph, node);
  // What was decided: nodes that no link tells apart have many in common.
  std::unordered_set<const Resource*> known;
  const auto add = [&](const Resource& holder) {
    const std::string& key = holder.uri.document();
    if (known.insert(&holder).second && own.count(key) == 0) {
      otherHolders_.insert(key);
    }
  };
  for (std::size_t index = 0;
       index < topology.nodes().size() &&
       index <= std::numeric_limits<std::uint16_t>::max();
       ++index) {
    const Node other = topology.node(index);
    for (const Resource* system : topology.nodes()[index]) {
      if (system != nullptr) {
        add(*system);
      }
    }
    for (const Resource* manager : other.managers) {
      add(*manager);
    }
    for (const Resource* chassis : other.chassis) {
      if (known.count(chassis) == 0 &&
          !isShared(graph, topology, *chassis, other, own)) {
        add(*chassis);
      }
    }
  }
}

bool NodeScope::holds(std::string_view document) const {
  return otherHolders_.empty() ||
         !redfish::liesWithinAny(document, otherHolders_);
}

}  // namespace devhealth
