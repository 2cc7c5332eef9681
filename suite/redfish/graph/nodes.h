#pragma once

#include <string_view>
#include <vector>

#include "suite/redfish/graph/chassis_links.h"
#include "suite/redfish/graph/graph.h"

namespace redfish {

// Which systems a service has, and which of them make one machine: pure
// functions of what the graph holds so far.

/// The service root; null before it was read.
const Resource* serviceRoot(const Graph& graph);

/// The members of a collection that the service root links ("Chassis",
/// "Managers"), as far as they were read, in the order served.
std::vector<const Resource*> membersOfRoot(const Graph& graph,
                                           std::string_view collection);

/// The systems of one node: its own first, then those that are its parts. A
/// node whose own system does not exist or cannot be read has no parts; a
/// system that was never asked for is null.
using NodeSystems = std::vector<const Resource*>;

/// The nodes of the service by their numbers: the members of Systems without
/// those that only exist inside a machine (SystemType Virtual, OS,
/// VirtuallyPartitioned, DPU, Composed), unless that leaves none, in the
/// natural order of their Ids, so that the numbers do not depend on the order
/// in which the service lists them.
///
/// A system that has neither `Boot` nor a reset action, a BIOS version or
/// `Bios` is no machine of its own if other systems have one of these: it is a
/// part of the only such system, or of the only one with which it shares a
/// chassis.
std::vector<NodeSystems> nodesOf(const Graph& graph);

/// The same, for callers that have the links of the chassis already.
std::vector<NodeSystems> nodesOf(const Graph& graph, const ChassisLinks& links);

/// Whether the chassis must be read to know which systems are parts of which.
bool partsDependOnChassis(const Graph& graph);

}  // namespace redfish
