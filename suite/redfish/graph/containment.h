#pragma once

#include <map>
#include <string>
#include <vector>

#include "suite/redfish/graph/graph.h"

namespace redfish {

/// Chassis inside chassis deeper than this are not followed.
constexpr int kMaxContainment = 8;

/// Which chassis stand inside which, told by the links of both sides
/// (`Links.Contains` and `Links.ContainedBy`). It shows the graph as it was
/// when it was made; the graph has to outlive it.
class ChassisContainment {
 public:
  explicit ChassisContainment(const Graph& graph);

  /// The chassis directly inside a chassis, as far as they were read. One may
  /// come twice.
  std::vector<const Resource*> inside(const Resource& chassis) const;

 private:
  const Graph& graph_;
  /// Members of the service's collection by the chassis that they name.
  std::map<std::string, std::vector<const Resource*>> containedBy_;
};

/// The chassis around a chassis, the nearest first. Ends at one that was not
/// read, which is in the list, and after `kMaxContainment`.
std::vector<Uri> chassisAround(const Graph& graph, const Resource& chassis);

}  // namespace redfish
