#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

/// A small server for tests: one system, one chassis and one manager, to be
/// filled part by part. Paths are given without "/redfish/v1/".
class Server {
 public:
  explicit Server(std::string_view system = "{}",
                  std::string_view chassis = "{}");

  /// Adds a resource, or replaces it; kMissing and kBroken work as texts.
  void put(const std::string& path, std::string_view text);

  /// Links `path/property` from a resource that is there already.
  void link(const std::string& path, const std::string& property);

  /// The same, with a resource behind the link.
  void linked(const std::string& path, const std::string& property,
              std::string_view text);

  /// The same, with a collection behind the link, of members given by the
  /// last segment of their links and their texts.
  void members(const std::string& path, const std::string& property,
               const std::vector<std::pair<std::string, std::string>>& entries);

  /// Adds a further system, with a chassis of its own of the same name.
  void addNode(const std::string& name);

  const redfish::Graph& graph() const { return graph_; }
  redfish::Node node(std::uint16_t index = 0) const;
  redfish::Topology topology() const { return redfish::Topology(graph_); }

 private:
  redfish::Graph graph_;
};

/// {"@odata.id": "/redfish/v1/PATH"}
std::string linkTo(const std::string& path);
