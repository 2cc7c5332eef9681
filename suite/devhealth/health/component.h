#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "suite/devhealth/health/event.h"
#include "suite/devhealth/health/node_scope.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// What a part says of its health without a condition.
struct Statement {
  redfish::Health severity = redfish::Health::kUnknown;  ///< What it means.
  redfish::Health health = redfish::Health::kUnknown;    ///< As stated.
  bool failurePredicted = false;
};

/// What a system, chassis or manager says of itself and all below it.
Statement statementOfHolder(const redfish::json::object& holder);

/// The event of a part's statement. Its message calls the part by `name`.
Event healthEvent(const redfish::Uri& uri, const redfish::json::object& part,
                  const Statement& statement, const std::string& name);

/// A part that states trouble. Its pointer obeys the graph's rules.
struct Component {
  redfish::Uri uri;  ///< Of its place.
  /// Of the resource that it says to be; the same as `uri` for most.
  redfish::Uri own;
  const redfish::json::object* part = nullptr;
  Statement statement;
  bool aggregate = false;  ///< It stands for all the parts below it.
  bool quiet = false;      ///< Power control, or an empty bay.
  std::vector<redfish::Uri> repeated;  ///< Its places in further chassis.
};

/// The components of a node that state trouble, the innermost first.
std::vector<Component> troubledComponents(const redfish::Graph& graph,
                                          const redfish::Node& node,
                                          const NodeScope& scope);

/// Which redundancy groups of a service are in trouble. Looks at each document
/// once. The graph must outlive it.
class LostRedundancy {
 public:
  explicit LostRedundancy(const redfish::Graph& graph) : graph_(graph) {}

  /// Whether a group of a part's list, or of its subsystem, is in trouble.
  bool isBeside(const redfish::Uri& part);

 private:
  const redfish::Graph& graph_;
  std::unordered_map<std::string, bool> lost_;  ///< By document.
};

/// The links of an aggregate to parts that lie elsewhere: the drives of a
/// storage, the parts that a summary of a system stands for.
std::vector<redfish::Uri> partsElsewhere(const redfish::Graph& graph,
                                         const Component& aggregate);

}  // namespace devhealth
