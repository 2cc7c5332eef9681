#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// The slots of a node in the order in which its chassis list them: they give
/// the order of the devices in them, and their labels.
class PciSlots {
 public:
  PciSlots(const redfish::Graph& graph, const redfish::Node& node);

  /// The place of a device's slot among all slots: the slot that names the
  /// device, else the only one of the label that the device states.
  std::optional<std::size_t> positionOf(
      const redfish::Uri& uri, const redfish::json::object& device) const;

  /// Whether a text is the label of the slot that a device is in.
  bool isLabelOf(const std::string& text, const redfish::Uri& uri,
                 const redfish::json::object& device) const;

 private:
  static constexpr std::size_t kAmbiguous = static_cast<std::size_t>(-1);

  std::vector<std::string> labels_;
  std::unordered_map<std::string, std::size_t> byDevice_;
  std::unordered_map<std::string, std::size_t> byLabel_;
};

}  // namespace devhealth
