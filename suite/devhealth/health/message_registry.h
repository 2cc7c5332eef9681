#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "suite/devhealth/health/message_id.h"
#include "suite/redfish/graph/graph.h"

namespace devhealth {

/// The message registries that a service holds, as far as they were read: from
/// the collection linked by the root over the file that describes a registry
/// to the registry itself (DSP0266, MessageRegistryFile and MessageRegistry).
/// Uses four registries at most; a missing one costs only texts.
class MessageRegistries {
 public:
  explicit MessageRegistries(const redfish::Graph& graph) : graph_(graph) {}

  /// The message of an identifier: from the registry of its version, else from
  /// the highest minor version of its major one. Null if there is none, or if
  /// it was not read yet.
  const redfish::json::object* find(const MessageId& id);

  /// What must be read to find the messages asked for so far.
  const std::vector<redfish::Uri>& wanted() const { return wanted_; }

 private:
  const redfish::json::object* messagesOf(const MessageId& id);
  std::vector<redfish::Uri> filesFor(const redfish::json::object& collection,
                                     const MessageId& id) const;
  /// Whether the link was asked for. Notes it as wanted if not.
  bool known(const redfish::Uri& link);

  const redfish::Graph& graph_;
  /// By prefix, major and minor; null: not to be had.
  std::unordered_map<std::string, const redfish::json::object*> registries_;
  std::vector<redfish::Uri> wanted_;
};

}  // namespace devhealth
