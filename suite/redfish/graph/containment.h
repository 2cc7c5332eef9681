#pragma once

#include <vector>

#include "suite/redfish/graph/graph.h"

namespace redfish {

/// How many levels of chassis inside chassis are followed.
constexpr int kMaxContainment = 8;

/// The chassis that contain a chassis, the nearest first, `kMaxContainment` at
/// most. One that was not read is the last of the list.
std::vector<Uri> chassisAround(const Graph& graph, const Resource& chassis);

}  // namespace redfish
