#pragma once

#include <string_view>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace redfish {

// Whether the better of two models has brought anything: what decides the
// fall-backs of the plan. Pure functions of the graph. What cannot be read
// counts as brought: it exists.

/// Whether a chassis' ThermalSubsystem (PowerSubsystem) names a part that is
/// there. `subsystem` and `parts` are the links: "ThermalSubsystem", "Fans".
bool subsystemHasParts(const Graph& graph, const json::object& chassis,
                       std::string_view subsystem, std::string_view parts);

/// Whether any source of the node's cooling, or one of the chassis around it
/// that were read, has a fan.
bool hasFans(const Graph& graph, const Node& node);

/// The same for power supplies.
bool hasPowerSupplies(const Graph& graph, const Node& node);

/// Whether any of the links at a path leads to a resource that exists.
bool anyExists(const Graph& graph, const json::object& holder,
               std::string_view path);

}  // namespace redfish
