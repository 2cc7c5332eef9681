#include "suite/redfish/graph/containment.h"

#include <optional>
#include <utility>

namespace redfish {

std::vector<Uri> chassisAround(const Graph& graph, const Resource& chassis) {
  std::vector<Uri> around;
  const Resource* inner = &chassis;
  for (int depth = 0; depth < kMaxContainment && inner != nullptr; ++depth) {
    std::optional<Uri> outer;
    anyLinkAt(inner->body, "Links/ContainedBy", [&outer](const Uri& first) {
      outer = first;
      return true;
    });
    if (!outer) {
      break;
    }
    inner = graph.findRead(outer->document());
    around.push_back(std::move(*outer));
  }
  return around;
}

}  // namespace redfish
