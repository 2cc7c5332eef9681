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

/// What the health of a node's parts tells beyond the conditions.
struct PartEvents {
  std::vector<Event> events;
  /// Document keys of the branches that were not entered below a holder whose
  /// health nothing found so far explains.
  std::set<std::string> unexplained;
};

/// The events that are told by health alone. A component gives one when its
/// health is worse than all that was found at and below it; so does a
/// subsystem, of its roll-up. With `holders` systems, chassis and managers
/// give one, too: a system or chassis when nothing in the machine is as bad, a
/// manager when nothing below it is. Power control and empty bays give one
/// only in place of such a holder, or, the bays, beside a redundancy group in
/// trouble: healthy machines report both. A part that is listed twice gives
/// one. `found` holds what the conditions tell, `worst` the worst severity
/// among those of the node; what the parts tell is added to both.
PartEvents partEvents(const redfish::Graph& graph, const redfish::Node& node,
                      const NodeScope& scope, bool holders,
                      FoundSeverities& found, redfish::Health worst);

}  // namespace devhealth
