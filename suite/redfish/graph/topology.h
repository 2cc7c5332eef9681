#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "suite/redfish/graph/chassis_links.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/nodes.h"

namespace redfish {

// Which chassis and managers belong to a node: pure functions of what the
// graph holds so far. The crawl uses them to decide what to read next, the
// mapping to decide what to report. Graph pointers obey the graph's rules.

/// One node with what belongs to it. Every resource in it has been read.
struct Node {
  /// The node's own system; null when there is none at the index, or when it
  /// was not read.
  const Resource* system = nullptr;
  /// That system, then the systems that are its parts: what they list belongs
  /// to the node, and their health counts like that of its own. Empty without
  /// a system of its own.
  std::vector<const Resource*> systems;
  bool alone = false;  ///< The only node of its service.
  /// Chassis of the node in order: for each system those that it links and
  /// those that link it, else those told apart by their Ids; then those below
  /// them.
  std::vector<const Resource*> chassis;
  /// Whether the chassis were found by links. If not, the whole list may change
  /// while there are still chassis to be read.
  bool chassisLinked = false;
  /// Managers of the node: those that its systems link, else its chassis, else
  /// the service's own, else, when no node links any, all.
  std::vector<const Resource*> managers;
};

/// All nodes of a service. Parses every link of systems and chassis once,
/// however many nodes there are. The graph must outlive it and not change.
class Topology {
 public:
  explicit Topology(const Graph& graph);

  const std::vector<NodeSystems>& nodes() const { return nodes_; }

  /// The node at a 0-based index of `nodes`. Has no system if there is none at
  /// the index.
  Node node(std::size_t index) const;

  /// Whether a chassis is linked, in either direction, with one of some
  /// systems. The systems must have been read.
  bool isTied(const Resource& chassis, const NodeSystems& systems) const;

  class OrderedSet;

 private:
  Node withChassis(std::size_t index) const;
  /// The chassis of a node that is linked with none: those with the Id of one
  /// of its systems, then those that belong to no node.
  std::vector<const Resource*> chassisById(std::size_t index) const;
  /// Whether a chassis belongs to another node and not to this one. A card that
  /// names only a system of its own, such as a DPU, belongs to no other node.
  bool isOthers(std::size_t index, const Resource& chassis) const;
  /// Adds the chassis inside the chosen ones, without those of other nodes.
  void addInside(std::size_t index, OrderedSet& chosen) const;
  std::vector<const Resource*> managersOf(const Node& node) const;
  bool anyNodeLinksManagers() const;

  const Graph& graph_;
  ChassisLinks links_;
  std::vector<NodeSystems> nodes_;
  std::unordered_map<std::string, std::size_t> nodeOf_;  ///< By system.
  /// The nodes that have a system of an Id.
  std::unordered_map<std::string_view, std::set<std::size_t>> nodesById_;
  /// By the Id of a system: the chassis with that Id, as indexes of the
  /// members.
  std::unordered_map<std::string_view, std::vector<std::size_t>> namesakes_;
  /// Chassis that name no system that was read and have the Id of none.
  std::vector<const Resource*> shared_;
  mutable std::optional<bool> managersLinked_;  ///< Once it was asked for.
};

/// The nodes of a graph, found once until the graph changes. Not for several
/// threads at once. What it returns is valid until the graph changes.
class KnownNodes {
 public:
  /// `graph` must outlive this object.
  explicit KnownNodes(const Graph& graph) : graph_(graph) {}

  /// All nodes of the graph as it is.
  const Topology& topology() const;

  /// What `Topology::node` gives for the graph as it is.
  const Node& at(std::uint16_t nodeIndex) const;

  /// What `redfish::partsDependOnChassis` says of the graph as it is.
  bool partsDependOnChassis() const;

 private:
  void forgetChanged() const;

  const Graph& graph_;
  mutable std::uint64_t changes_ = 0;  ///< Of the graph, as of what follows.
  mutable std::optional<Topology> topology_;
  mutable std::map<std::uint16_t, Node> nodes_;
  mutable std::optional<bool> partsDepend_;
};

/// Where to look for a node's fans, or its power supplies: in its chassis, then
/// in what the CooledBy (PoweredBy) links of its systems and chassis and the
/// Fans (PowerSupplies) links of its chassis name. Such a link names a chassis,
/// a part, or a place in a document such as
/// "/redfish/v1/Chassis/E/Thermal#/Fans/0". In the order of the rows; each
/// place stands once.
std::vector<Uri> coolingSources(const Node& node);
std::vector<Uri> powerSources(const Node& node);

/// The chassis around the node's own, the nearest first. To be asked one after
/// another for fans and supplies if the sources above have none. A chassis that
/// was not read ends the list.
std::vector<Uri> enclosingChassis(const Graph& graph, const Node& node);

}  // namespace redfish
