#pragma once

#include <string>
#include <unordered_map>

#include "suite/devhealth/parts/names/display_name.h"
#include "suite/redfish/graph/graph.h"

namespace devhealth {

/// Names parts one by one. The name of each differs from those of the other
/// entries of its array, or of the documents that were read beside its own.
/// Works each list out once.
class SiblingNames {
 public:
  /// The graph has to outlive it and stay as it is.
  explicit SiblingNames(const redfish::Graph& graph) : graph_(graph) {}

  /// The name of the part that a link leads to.
  std::string nameOf(const redfish::Uri& uri,
                     const redfish::json::object& part);

 private:
  void nameDocuments(std::string_view folder);
  void nameEntries(const redfish::Uri& uri, std::string_view array);
  void keep(const std::vector<Candidate>& candidates);

  const redfish::Graph& graph_;
  std::unordered_map<std::string, bool> named_;
  std::unordered_map<std::string, std::string> names_;  ///< By identity.
};

}  // namespace devhealth
