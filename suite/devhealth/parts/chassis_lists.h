#pragma once

#include <string_view>
#include <vector>

#include "suite/devhealth/parts/mapped.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// The members of one collection of every chassis of a node, each once.
class ChassisLists {
 public:
  ChassisLists(const redfish::Graph& graph, const redfish::Node& node,
               std::string_view collection);

  const std::vector<Part>& parts() const { return all_.parts(); }

  /// Tells the tally which of the collections could not be read, or lack
  /// members.
  void reportFailures(ReadTally& tally) const;

 private:
  PartList all_;
  std::vector<LinkedList> lists_;
};

}  // namespace devhealth
