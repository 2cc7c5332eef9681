#pragma once

#include <string>
#include <unordered_map>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// The parts that a service lists under several of a node's chassis although
/// each exists once (`SameParts`).
class RepeatedParts {
 public:
  RepeatedParts(const redfish::Graph& graph, const redfish::Node& node);

  /// The link by which a part is listed first; its own if it is listed once.
  const redfish::Uri& firstOf(const redfish::Uri& uri) const;

 private:
  std::unordered_map<std::string, redfish::Uri> firsts_;  ///< By identity.
};

}  // namespace devhealth
