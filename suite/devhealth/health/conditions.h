#pragma once

#include <vector>

#include "suite/devhealth/health/event.h"
#include "suite/devhealth/health/node_scope.h"
#include "suite/redfish/graph/graph.h"

namespace devhealth {

/// The conditions that the graph holds for a node: those of the service's
/// list, then those of all that was read. One that only points to a resource
/// is dropped when that resource has conditions of its own; a resource that
/// would have to be read for that is added to `wanted`. Events outside the
/// scope are included: they explain the health of what the nodes share.
EventList conditionsOf(const redfish::Graph& graph, const NodeScope& scope,
                       std::vector<redfish::Uri>& wanted);

}  // namespace devhealth
