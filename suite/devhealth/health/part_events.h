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

/// The events of a node's parts that no condition tells.
struct PartEvents {
  std::vector<Event> events;
  /// Document keys of the branches that were not entered below a holder whose
  /// health nothing found so far explains.
  std::set<std::string> unexplained;
};

/// The events that are told by health alone:
///
/// - A component whose health is worse than all that was found at and below it
///   gives an event; so does a subsystem, for its roll-up.
/// - With `holders`, systems and chassis give one if nothing in the machine is
///   as bad, and managers if nothing below them is.
/// - Power control and empty bays, of which healthy machines report trouble,
///   give one only in place of such a holder; empty bays also beside a
///   redundancy group in trouble.
/// - A part that is listed twice gives one event.
///
/// `found` holds the severities of the conditions, `worst` the worst one of the
/// node; those of the parts are added to both.
PartEvents partEvents(const redfish::Graph& graph, const redfish::Node& node,
                      const NodeScope& scope, bool holders,
                      FoundSeverities& found, redfish::Health worst);

}  // namespace devhealth
