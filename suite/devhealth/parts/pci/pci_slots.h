#pragma once

#include <string>
#include <unordered_map>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// The labels of the slots in a node's chassis.
class PciSlots {
 public:
  PciSlots(const redfish::Graph& graph, const redfish::Node& node);

  /// The label of the slot that a device is in: of the slot that names it, else
  /// what the device states itself (`Slot`, or `Location` as a text), else the
  /// label of its place. A slot without a label has its number. Empty if none
  /// of these is known.
  std::string labelOf(const redfish::Uri& uri,
                      const redfish::json::object& device) const;

 private:
  std::unordered_map<std::string, std::string> byDevice_;
};

}  // namespace devhealth
