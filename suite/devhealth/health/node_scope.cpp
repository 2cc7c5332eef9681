#include "suite/devhealth/health/node_scope.h"

#include <vector>

#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

using redfish::Graph;
using redfish::Node;
using redfish::Resource;
using redfish::Uri;
using Keys = std::unordered_set<std::string>;

// Chassis inside chassis deeper than this are not followed.
constexpr int kMaxContainment = 8;

Keys keysOf(const std::vector<const Resource*>& resources) {
  Keys keys;
  for (const Resource* resource : resources) {
    keys.insert(resource->uri.document());
  }
  return keys;
}

void addLinks(const Resource& holder, std::string_view path, Keys& keys) {
  for (const Uri& link : redfish::linksAt(holder.body, path)) {
    keys.insert(link.document());
  }
}

// The chassis around a chassis, the nearest first.
std::vector<std::string> enclosures(const Graph& graph,
                                    const Resource& chassis) {
  std::vector<std::string> keys;
  const Resource* inner = &chassis;
  for (int depth = 0; depth < kMaxContainment && inner != nullptr; ++depth) {
    const auto outer = redfish::linkAt(inner->body, "Links/ContainedBy");
    if (!outer) {
      break;
    }
    keys.push_back(outer->document());
    inner = graph.find(outer->document());
  }
  return keys;
}

// The members of the service's collection of chassis, as far as read.
std::vector<const Resource*> allChassis(const Graph& graph) {
  std::vector<const Resource*> all;
  const Resource* root = redfish::serviceRoot(graph);
  if (root == nullptr) {
    return all;
  }
  const auto* collection = graph.follow(root->body, "Chassis").object;
  if (collection == nullptr) {
    return all;
  }
  for (const Uri& link : redfish::linksAt(*collection, "Members")) {
    const Resource* chassis = graph.find(link.document());
    if (chassis != nullptr) {
      all.push_back(chassis);
    }
  }
  return all;
}

}  // namespace

NodeScope::NodeScope(const Graph& graph, const Node& node) {
  if (node.alone || node.system == nullptr) {
    return;
  }
  Keys ownManagers = keysOf(node.managers);
  Keys own = keysOf(node.chassis);
  for (const Resource* chassis : node.chassis) {
    for (std::string& key : enclosures(graph, *chassis)) {
      own.insert(std::move(key));
    }
  }

  Keys systems;
  Keys claimed;
  Keys managers;
  for (const Resource* system : redfish::eligibleSystems(graph)) {
    if (system == nullptr || system == node.system) {
      continue;
    }
    systems.insert(system->uri.document());
    addLinks(*system, "Links/Chassis", claimed);
    addLinks(*system, "Links/ManagedBy", managers);
  }

  const std::vector<const Resource*> all = allChassis(graph);
  for (const Resource* chassis : all) {
    Keys named;
    addLinks(*chassis, "Links/ComputerSystems", named);
    if (named.count(node.system->uri.document()) > 0) {
      continue;
    }
    for (const std::string& system : named) {
      if (systems.count(system) == 0) {
        continue;
      }
      claimed.insert(chassis->uri.document());
      break;
    }
  }
  // A card in another node's chassis is that node's, too.
  Keys inside;
  for (const Resource* chassis : all) {
    for (const std::string& outer : enclosures(graph, *chassis)) {
      if (own.count(outer) > 0) {
        break;
      }
      if (claimed.count(outer) == 0) {
        continue;
      }
      inside.insert(chassis->uri.document());
      break;
    }
  }
  claimed.merge(inside);

  foreign_ = std::move(systems);
  for (const std::string& chassis : claimed) {
    if (own.count(chassis) == 0) {
      foreign_.insert(chassis);
    }
  }
  for (const std::string& manager : managers) {
    if (ownManagers.count(manager) == 0) {
      foreign_.insert(manager);
    }
  }
}

bool NodeScope::holds(std::string_view document) const {
  if (foreign_.empty()) {
    return true;
  }
  while (!document.empty()) {
    if (foreign_.count(std::string(document)) > 0) {
      return false;
    }
    document = redfish::parentOf(document);
  }
  return true;
}

}  // namespace devhealth
