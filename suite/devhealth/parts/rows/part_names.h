#pragma once

#include <string>
#include <unordered_map>

#include "suite/devhealth/parts/names/sibling_names.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// What a person calls the parts of a node in a sentence. A part that has a
/// row in one of the tables is called as that table calls it, as far as what
/// was read tells; any other part by the word for its class and a name that
/// tells it from those of its list ("Drive 3").
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
