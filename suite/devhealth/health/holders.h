#pragma once

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"
#include "suite/redfish/graph/uri.h"

namespace devhealth {

/// The holders of a node with what lies in each.
class Holders {
 public:
  /// Graph and node have to outlive it; the node has a system.
  Holders(const redfish::Graph& graph, const redfish::Node& node);

  /// The places whose events explain what the system says of itself.
  std::vector<redfish::Uri> inSystem() const;
  /// The same for a chassis of the node.
  std::vector<redfish::Uri> inChassis(const redfish::Resource& chassis) const;

  /// Adds the document keys of what was left unread in the system because its
  /// roll-ups say that all is well.
  void skippedInSystem(std::set<std::string>& skipped) const;
  /// The same for a chassis of the node.
  void skippedInChassis(const redfish::Resource& chassis,
                        std::set<std::string>& skipped) const;

 private:
  bool holdsSystem(const redfish::Resource& chassis) const;
  std::vector<const redfish::Resource*> inner(
      const redfish::Resource& chassis) const;

  const redfish::Graph& graph_;
  const redfish::Node& node_;
  std::vector<redfish::Uri> systemPlaces_;  ///< Of the system's own parts.
  std::unordered_map<std::string, const redfish::Resource*> chassis_;
  /// Chassis of the node by the one that they say to be in.
  std::unordered_map<std::string, std::vector<const redfish::Resource*>>
      containedBy_;
};

}  // namespace devhealth
