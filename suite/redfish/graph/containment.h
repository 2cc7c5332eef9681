#pragma once

#include <vector>

#include "suite/redfish/graph/graph.h"

namespace redfish {

/// Chassis inside chassis deeper than this are not followed.
constexpr int kMaxContainment = 8;

/// The chassis around a chassis, the nearest first. Ends at one that was not
/// read, which is in the list, and after `kMaxContainment`.
std::vector<Uri> chassisAround(const Graph& graph, const Resource& chassis);

}  // namespace redfish
