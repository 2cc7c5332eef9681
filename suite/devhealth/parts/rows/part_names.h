#pragma once

#include <string>
#include <unordered_map>

#include "suite/devhealth/parts/names/sibling_names.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// What the parts of a node are called in a sentence. A part with a row in one
/// of the tables has the name of that row, if enough was read to know it. Any
/// other part has the word for its class and a name that no other part of its
/// list has ("Drive 3").
class PartNames {
 public:
  /// Graph and node have to outlive it and stay as they are.
  PartNames(const redfish::Graph& graph, const redfish::Node& node)
      : graph_(graph), node_(node), siblings_(graph) {}

  std::string nameOf(const redfish::Uri& uri,
                     const redfish::json::object& part);

 private:
  void readTables();

  const redfish::Graph& graph_;
  const redfish::Node& node_;
  SiblingNames siblings_;
  bool tablesRead_ = false;
  std::unordered_map<std::string, std::string> rows_;  ///< By identity.
};

}  // namespace devhealth
