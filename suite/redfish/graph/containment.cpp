#include "suite/redfish/graph/containment.h"

#include <utility>

#include "suite/redfish/graph/nodes.h"

namespace redfish {

ChassisContainment::ChassisContainment(const Graph& graph) : graph_(graph) {
  for (const Resource* chassis : membersOfRoot(graph, "Chassis")) {
    for (const Uri& outer : linksAt(chassis->body, "Links/ContainedBy")) {
      containedBy_[outer.document()].push_back(chassis);
    }
  }
}

std::vector<const Resource*> ChassisContainment::inside(
    const Resource& chassis) const {
  std::vector<const Resource*> found =
      readLinks(graph_, chassis, "Links/Contains");
  const auto more = containedBy_.find(chassis.uri.document());
  if (more != containedBy_.end()) {
    found.insert(found.end(), more->second.begin(), more->second.end());
  }
  return found;
}

std::vector<Uri> chassisAround(const Graph& graph, const Resource& chassis) {
  std::vector<Uri> around;
  const Resource* inner = &chassis;
  for (int depth = 0; depth < kMaxContainment && inner != nullptr; ++depth) {
    auto outer = linksAt(inner->body, "Links/ContainedBy");
    if (outer.empty()) {
      break;
    }
    inner = graph.findRead(outer.front().document());
    around.push_back(std::move(outer.front()));
  }
  return around;
}

}  // namespace redfish
