#pragma once

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/status.h"
#include "suite/redfish/graph/topology.h"

namespace redfish {

/// The health that a system, chassis or manager states for itself and all
/// below it: the worse of `Status.HealthRollup` and `Status.Health`. A state
/// of "Degraded" without either is a warning.
Health holderHealth(const json::object& body);

/// Whether the service's list of active conditions (ServiceConditions, linked
/// from the service root since version 1.13) alone tells the node's health, so
/// that no component needs to be read for it. That is so if the list was read,
/// its `HealthRollup` is the worst severity that it lists ("OK" for an empty
/// list), and no holder of the node states a health worse than the conditions
/// explain. On a service with several nodes only conditions that originate in
/// this node's own resources explain anything. False while the node's system
/// has not been read.
///
/// Call it after the node's chassis and managers were read, too: a holder that
/// is not in the graph is not asked.
bool serviceConditionsSuffice(const Graph& graph, const Node& node);

/// The document of the service's active conditions; null if the root links
/// none or it was not read.
const json::object* serviceConditions(const Graph& graph);

}  // namespace redfish
