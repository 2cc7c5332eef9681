#include "suite/redfish/graph/topology.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "suite/redfish/graph/containment.h"

namespace redfish {

// Adds resources in order, each once.
class Topology::OrderedSet {
 public:
  void add(const Resource* resource) {
    if (seen_.insert(resource).second) {
      order_.push_back(resource);
    }
  }
  void addAll(const std::vector<const Resource*>& resources) {
    for (const Resource* resource : resources) {
      add(resource);
    }
  }
  const std::vector<const Resource*>& order() const { return order_; }
  std::vector<const Resource*> take() { return std::move(order_); }

 private:
  std::unordered_set<const Resource*> seen_;
  std::vector<const Resource*> order_;
};

namespace {

// The managers that a node's systems link, else those that its chassis link.
std::vector<const Resource*> linkedManagers(
    const Graph& graph, const NodeSystems& systems,
    const std::vector<const Resource*>& chassis) {
  Topology::OrderedSet managers;
  for (const Resource* system : systems) {
    managers.addAll(readLinks(graph, *system, "Links/ManagedBy"));
  }
  if (managers.order().empty()) {
    for (const Resource* box : chassis) {
      managers.addAll(readLinks(graph, *box, "Links/ManagedBy"));
    }
  }
  return managers.take();
}

// Adds links in order, each place once.
class LinkList {
 public:
  void add(Uri link) {
    if (seen_.insert(link.identity()).second) {
      links_.push_back(std::move(link));
    }
  }
  void addAll(const Resource& holder, std::string_view path) {
    for (Uri& link : linksAt(holder.body, path)) {
      add(std::move(link));
    }
  }
  std::vector<Uri> take() { return std::move(links_); }

 private:
  std::set<std::string> seen_;
  std::vector<Uri> links_;
};

std::vector<Uri> sources(const Node& node, std::string_view suppliedBy,
                         std::string_view parts) {
  LinkList links;
  for (const Resource* chassis : node.chassis) {
    links.add(chassis->uri);
  }
  for (const Resource* system : node.systems) {
    links.addAll(*system, suppliedBy);
  }
  for (const Resource* chassis : node.chassis) {
    links.addAll(*chassis, suppliedBy);
    links.addAll(*chassis, parts);
  }
  return links.take();
}

}  // namespace

Topology::Topology(const Graph& graph)
    : graph_(graph),
      links_(graph, membersOfRoot(graph, "Chassis")),
      nodes_(nodesOf(graph, links_)) {
  for (std::size_t index = 0; index < nodes_.size(); ++index) {
    for (const Resource* system : nodes_[index]) {
      if (system != nullptr) {
        nodeOf_.emplace(system->uri.document(), index);
        nodesById_[stringAt(system->body, "Id")].insert(index);
      }
    }
  }
  nodesById_.erase("");
  std::unordered_set<std::string_view> ids;
  for (const Resource* system : membersOfRoot(graph, "Systems")) {
    ids.insert(stringAt(system->body, "Id"));
  }
  ids.erase("");
  for (std::size_t place = 0; place < links_.members().size(); ++place) {
    const Resource& chassis = *links_.members()[place];
    const std::string_view id = stringAt(chassis.body, "Id");
    if (ids.count(id) > 0) {
      namesakes_[id].push_back(place);
    } else if (!links_.namesReadSystem(chassis)) {
      shared_.push_back(&chassis);
    }
  }
}

Node Topology::node(std::size_t index) const {
  if (index >= nodes_.size()) {
    return {};
  }
  Node node = withChassis(index);
  if (node.system != nullptr) {
    node.managers = managersOf(node);
  }
  return node;
}

bool Topology::isTied(const Resource& chassis,
                      const NodeSystems& systems) const {
  return std::any_of(
      systems.begin(), systems.end(),
      [&](const Resource* system) { return links_.areTied(*system, chassis); });
}

Node Topology::withChassis(std::size_t index) const {
  Node node;
  node.alone = nodes_.size() == 1;
  const NodeSystems& systems = nodes_[index];
  if (!isRead(systems.front())) {
    return node;
  }
  node.system = systems.front();
  node.systems = systems;

  OrderedSet chosen;
  for (const Resource* system : systems) {
    chosen.addAll(links_.chassisOf(*system));
  }
  node.chassisLinked = !chosen.order().empty();
  if (!node.chassisLinked) {
    chosen.addAll(node.alone ? links_.members() : chassisById(index));
  }
  addInside(index, chosen);
  node.chassis = chosen.take();
  return node;
}

std::vector<const Resource*> Topology::chassisById(std::size_t index) const {
  std::set<std::size_t> places;
  for (const Resource* system : nodes_[index]) {
    const auto found = namesakes_.find(stringAt(system->body, "Id"));
    if (found != namesakes_.end()) {
      places.insert(found->second.begin(), found->second.end());
    }
  }
  std::vector<const Resource*> chosen;
  for (const std::size_t place : places) {
    const Resource* chassis = links_.members()[place];
    if (!isOthers(index, *chassis)) {
      chosen.push_back(chassis);
    }
  }
  chosen.insert(chosen.end(), shared_.begin(), shared_.end());
  return chosen;
}

bool Topology::isOthers(std::size_t index, const Resource& chassis) const {
  bool others = false;
  for (const std::string& system : links_.systemsOf(chassis)) {
    const auto owner = nodeOf_.find(system);
    if (owner == nodeOf_.end()) {
      continue;
    }
    if (owner->second == index) {
      return false;
    }
    others = true;
  }
  if (others || links_.namesReadSystem(chassis)) {
    return others;
  }
  const auto named = nodesById_.find(stringAt(chassis.body, "Id"));
  return named != nodesById_.end() &&
         named->second.size() > named->second.count(index);
}

void Topology::addInside(std::size_t index, OrderedSet& chosen) const {
  std::size_t begin = 0;
  for (int depth = 0; depth < kMaxContainment; ++depth) {
    const std::size_t end = chosen.order().size();
    for (; begin < end; ++begin) {
      for (const Resource* inner : links_.inside(*chosen.order()[begin])) {
        if (!isOthers(index, *inner)) {
          chosen.add(inner);
        }
      }
    }
  }
}

std::vector<const Resource*> Topology::managersOf(const Node& node) const {
  auto linked = linkedManagers(graph_, node.systems, node.chassis);
  if (!linked.empty()) {
    return linked;
  }
  const Resource* root = serviceRoot(graph_);
  auto own = root == nullptr
                 ? std::vector<const Resource*>()
                 : readLinks(graph_, *root, "Links/ManagerProvidingService");
  if (!own.empty() || anyNodeLinksManagers()) {
    return own;
  }
  return membersOfRoot(graph_, "Managers");
}

bool Topology::anyNodeLinksManagers() const {
  if (!managersLinked_) {
    // Nearly always no resource does, or the first node.
    managersLinked_ = false;
    const auto& all = graph_.resources();
    const bool any = std::any_of(all.begin(), all.end(), [&](const auto& one) {
      return anyLinkAt(one.second.body, "Links/ManagedBy",
                       [&](const Uri& link) {
                         return graph_.findRead(link.document()) != nullptr;
                       });
    });
    for (std::size_t index = 0;
         any && index < nodes_.size() && !*managersLinked_; ++index) {
      const Node node = withChassis(index);
      managersLinked_ =
          !linkedManagers(graph_, node.systems, node.chassis).empty();
    }
  }
  return *managersLinked_;
}

const Topology& KnownNodes::topology() const {
  forgetChanged();
  if (!topology_) {
    topology_.emplace(graph_);
  }
  return *topology_;
}

const Node& KnownNodes::at(std::uint16_t nodeIndex) const {
  const Topology& all = topology();
  const auto known = nodes_.find(nodeIndex);
  return known != nodes_.end()
             ? known->second
             : nodes_.emplace(nodeIndex, all.node(nodeIndex)).first->second;
}

bool KnownNodes::partsDependOnChassis() const {
  forgetChanged();
  if (!partsDepend_) {
    partsDepend_ = redfish::partsDependOnChassis(graph_);
  }
  return *partsDepend_;
}

void KnownNodes::forgetChanged() const {
  if (changes_ != graph_.changes()) {
    changes_ = graph_.changes();
    topology_.reset();
    nodes_.clear();
    partsDepend_.reset();
  }
}

std::vector<Uri> coolingSources(const Node& node) {
  return sources(node, "Links/CooledBy", "Links/Fans");
}

std::vector<Uri> powerSources(const Node& node) {
  return sources(node, "Links/PoweredBy", "Links/PowerSupplies");
}

std::vector<Uri> enclosingChassis(const Graph& graph, const Node& node) {
  LinkList links;
  std::set<std::string_view> own;
  for (const Resource* chassis : node.chassis) {
    own.insert(chassis->uri.document());
  }
  for (const Resource* chassis : node.chassis) {
    for (Uri& outer : chassisAround(graph, *chassis)) {
      if (own.count(outer.document()) == 0) {
        links.add(std::move(outer));
      }
    }
  }
  return links.take();
}

}  // namespace redfish
