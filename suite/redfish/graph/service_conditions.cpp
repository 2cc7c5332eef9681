#include "suite/redfish/graph/service_conditions.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <string>
#include <unordered_set>
#include <vector>

#include "suite/redfish/graph/document_path.h"

namespace redfish {
namespace {

std::vector<const Resource*> holdersOf(const Node& node) {
  std::vector<const Resource*> holders = node.systems;
  holders.insert(holders.end(), node.chassis.begin(), node.chassis.end());
  holders.insert(holders.end(), node.managers.begin(), node.managers.end());
  return holders;
}

// Whether a condition can stand for something in the node, whose holders have
// these keys.
bool concerns(const json::object& condition, const Node& node,
              const std::unordered_set<std::string>& keys) {
  if (node.alone) {
    return true;
  }
  const std::optional<Uri> origin = linkAt(condition, "OriginOfCondition");
  return origin && liesWithinAny(origin->document(), keys);
}

}  // namespace

Health holderHealth(const json::object& body) {
  const Health health = rollup(body, "Status");
  if (health == Health::kUnknown &&
      stringAt(body, "Status/State") == "Degraded") {
    return Health::kWarning;
  }
  return health;
}

const json::object* serviceConditions(const Graph& graph) {
  const Resource* root = serviceRoot(graph);
  return root == nullptr ? nullptr
                         : graph.follow(root->body, "ServiceConditions").object;
}

bool serviceConditionsSuffice(const Graph& graph, const Node& node) {
  if (node.system == nullptr || node.system->state != ResourceState::kRead) {
    return false;
  }
  const json::object* document = serviceConditions(graph);
  const json::array* conditions =
      document == nullptr ? nullptr : arrayAt(*document, "Conditions");
  if (conditions == nullptr) {
    return false;
  }

  const std::vector<const Resource*> holders = holdersOf(node);
  std::unordered_set<std::string> keys;
  for (const Resource* holder : holders) {
    keys.insert(holder->uri.document());
  }
  Health listed = Health::kOk;
  Health explained = Health::kOk;
  for (const json::value& entry : *conditions) {
    const json::object* condition = entry.if_object();
    if (condition == nullptr) {
      continue;
    }
    const Health severity = healthFromText(stringAt(*condition, "Severity"));
    listed = std::max(listed, severity);
    if (severity > explained && concerns(*condition, node, keys)) {
      explained = severity;
    }
  }
  if (healthFromText(stringAt(*document, "HealthRollup")) != listed) {
    return false;
  }
  return std::all_of(holders.begin(), holders.end(),
                     [explained](const Resource* holder) {
                       return holderHealth(holder->body) <= explained;
                     });
}

}  // namespace redfish
