#pragma once

#include <set>
#include <string>
#include <vector>

#include "suite/devhealth/health/event.h"
#include "suite/devhealth/health/found_severities.h"
#include "suite/devhealth/health/node_scope.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// The events that are told by the health of the node's components alone. A
/// component gives one when its health is worse than all that was found at and
/// below it; so does a subsystem, of its roll-up. What they give is added to
/// `found`, the innermost first.
std::vector<Event> componentEvents(const redfish::Graph& graph,
                                   const redfish::Node& node,
                                   const NodeScope& scope,
                                   FoundSeverities& found);

/// The same for the holders of the node: its system, chassis and managers. A
/// holder is explained by what was found in it: a system by its parts and
/// those of its chassis, a chassis by its parts, the chassis inside and the
/// system that it holds. For one that is not explained, the branches inside
/// that were not entered are added to `skipped`.
std::vector<Event> holderEvents(const redfish::Graph& graph,
                                const redfish::Node& node,
                                const FoundSeverities& found,
                                std::set<std::string>& skipped);

}  // namespace devhealth
