#include "suite/redfish/graph/containment.h"

#include <utility>

namespace redfish {

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
