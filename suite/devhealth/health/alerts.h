#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/report/report.h"
#include "syshealth/health/alert.h"

namespace devhealth {

struct AlertOptions {
  /// Look at the components even where the service's list of conditions
  /// suffices.
  bool thorough = false;
  /// The resources whose branches were to be read because a reading before
  /// told of them.
  std::set<std::string> unexplained;
};

/// A node's active events as far as the graph tells them, and what must be read
/// to tell more.
struct HealthReading {
  /// In the order of the categories; warnings and errors only.
  std::vector<report::Event> events;
  /// Why the events cannot be known: a list of components that the walk needs
  /// could not be read.
  std::optional<base::Failure> failure;
  /// Why some events may be unknown: a component that the walk needs could not
  /// be read.
  std::optional<base::Failure> gap;
  /// Whether the list of conditions told all, so that no walk was needed.
  bool serviceConditionsSuffice = false;
  /// Document keys of the resources whose branches were not entered although
  /// a holder above them states a health that nothing found so far explains.
  std::set<std::string> unexplained;
  /// What else to read: origins of conditions, sensors, registries.
  std::vector<redfish::Uri> wanted;
};

/// Reads the node's active events out of the graph: the service's list of
/// conditions, the conditions of all that was read, and the health of parts
/// that neither explains. Each event stands once. The events are the best
/// answer that this graph gives; after `unexplained` and `wanted` were read,
/// the next answer may be better. `topology` is the graph's, `node` one of its
/// nodes, whose system must not be null.
HealthReading readEvents(const redfish::Graph& graph,
                         const redfish::Topology& topology,
                         const redfish::Node& node,
                         const AlertOptions& options);

/// The alert that an event is in the health summary.
Tarvex::DeviceHealth::Alert printed(const report::Event& event);

}  // namespace devhealth
