#include "suite/redfish/graph/topology.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "suite/redfish/graph/containment.h"

namespace redfish {
namespace {

// Adds resources in order, each once.
class OrderedSet {
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
  std::set<const Resource*> seen_;
  std::vector<const Resource*> order_;
};

// What tells the systems of one node from those of the others.
class Claims {
 public:
  Claims(const Graph& graph, const NodeSystems& own,
         const std::vector<NodeSystems>& nodes) {
    for (const Resource* system : membersOfRoot(graph, "Systems")) {
      allIds_.insert(stringAt(system->body, "Id"));
    }
    for (const Resource* system : own) {
      own_.insert(system->uri.document());
      ownIds_.insert(stringAt(system->body, "Id"));
    }
    for (const NodeSystems& node : nodes) {
      for (const Resource* system : node) {
        if (system != nullptr && own_.count(system->uri.document()) == 0) {
          others_.insert(system->uri.document());
          otherIds_.insert(stringAt(system->body, "Id"));
        }
      }
    }
    for (auto* ids : {&allIds_, &ownIds_, &otherIds_}) {
      ids->erase("");
    }
  }

  // Whether a chassis has the Id of one of the node's systems.
  bool isNamesake(const Resource& chassis) const {
    return ownIds_.count(stringAt(chassis.body, "Id")) > 0;
  }

  // Whether a chassis belongs to nobody in particular: it names no system that
  // is there, and has the Id of none.
  bool isShared(const Graph& graph, const Resource& chassis) const {
    return allIds_.count(stringAt(chassis.body, "Id")) == 0 &&
           readLinks(graph, chassis, "Links/ComputerSystems").empty();
  }

  // Whether a chassis belongs to another node and not to this one. A card that
  // names only a system of its own, such as a DPU, does not.
  bool isOthers(const Graph& graph, const Resource& chassis) const {
    bool others = false;
    for (const Uri& link : linksAt(chassis.body, "Links/ComputerSystems")) {
      if (own_.count(link.document()) > 0) {
        return false;
      }
      others = others || others_.count(link.document()) > 0;
    }
    return others ||
           (readLinks(graph, chassis, "Links/ComputerSystems").empty() &&
            otherIds_.count(stringAt(chassis.body, "Id")) > 0);
  }

 private:
  std::set<std::string_view> own_;
  std::set<std::string_view> ownIds_;
  std::set<std::string_view> others_;
  std::set<std::string_view> otherIds_;
  std::set<std::string_view> allIds_;
};

// The chassis that links of either direction tie to a node's systems.
OrderedSet linkedChassis(const Graph& graph, const NodeSystems& systems,
                         const std::vector<const Resource*>& all) {
  OrderedSet linked;
  for (const Resource* system : systems) {
    linked.addAll(readLinks(graph, *system, "Links/Chassis"));
    for (const Resource* chassis : all) {
      if (linksTo(*chassis, "Links/ComputerSystems", *system)) {
        linked.add(chassis);
      }
    }
  }
  return linked;
}

// The chassis of a node that no link ties to any: those of its Id, then those
// that are nobody's.
OrderedSet chassisById(const Graph& graph, const Claims& claims,
                       const std::vector<const Resource*>& all) {
  OrderedSet chosen;
  for (const Resource* chassis : all) {
    if (claims.isNamesake(*chassis) && !claims.isOthers(graph, *chassis)) {
      chosen.add(chassis);
    }
  }
  for (const Resource* chassis : all) {
    if (claims.isShared(graph, *chassis)) {
      chosen.add(chassis);
    }
  }
  return chosen;
}

// Adds what stands inside the chassis, and is not another node's.
void addInside(const Graph& graph, const Claims& claims, OrderedSet& chosen) {
  const ChassisContainment containment(graph);
  std::size_t begin = 0;
  for (int depth = 0; depth < kMaxContainment; ++depth) {
    const std::vector<const Resource*> outer(
        chosen.order().begin() + static_cast<std::ptrdiff_t>(begin),
        chosen.order().end());
    if (outer.empty()) {
      break;
    }
    begin = chosen.order().size();
    for (const Resource* holder : outer) {
      for (const Resource* inner : containment.inside(*holder)) {
        if (!claims.isOthers(graph, *inner)) {
          chosen.add(inner);
        }
      }
    }
  }
}

void findChassis(const Graph& graph, const std::vector<NodeSystems>& nodes,
                 Node& node) {
  const auto all = membersOfRoot(graph, "Chassis");
  const Claims claims(graph, node.systems, nodes);
  OrderedSet chosen = linkedChassis(graph, node.systems, all);
  node.chassisLinked = !chosen.order().empty();
  if (!node.chassisLinked) {
    if (node.alone) {
      chosen.addAll(all);
    } else {
      chosen = chassisById(graph, claims, all);
    }
  }
  addInside(graph, claims, chosen);
  node.chassis = chosen.take();
}

// The managers that a node's systems link, else those that its chassis link.
std::vector<const Resource*> linkedManagers(
    const Graph& graph, const NodeSystems& systems,
    const std::vector<const Resource*>& chassis) {
  OrderedSet managers;
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

bool isRead(const Resource* resource) {
  return resource != nullptr && resource->state == ResourceState::kRead;
}

// The node of some systems with its chassis, without its managers.
Node withChassis(const Graph& graph, const NodeSystems& systems,
                 const std::vector<NodeSystems>& nodes) {
  Node node;
  node.alone = nodes.size() == 1;
  if (!isRead(systems.front())) {
    return node;
  }
  node.system = systems.front();
  node.systems = systems;
  findChassis(graph, nodes, node);
  return node;
}

bool anyNodeLinksManagers(const Graph& graph,
                          const std::vector<NodeSystems>& nodes) {
  return std::any_of(
      nodes.begin(), nodes.end(), [&](const NodeSystems& systems) {
        const Node node = withChassis(graph, systems, nodes);
        return !linkedManagers(graph, node.systems, node.chassis).empty();
      });
}

std::vector<const Resource*> managersOf(const Graph& graph, const Node& node,
                                        const std::vector<NodeSystems>& nodes) {
  auto linked = linkedManagers(graph, node.systems, node.chassis);
  if (!linked.empty()) {
    return linked;
  }
  const Resource* root = serviceRoot(graph);
  auto own = root == nullptr
                 ? std::vector<const Resource*>()
                 : readLinks(graph, *root, "Links/ManagerProvidingService");
  if (!own.empty() || anyNodeLinksManagers(graph, nodes)) {
    return own;
  }
  return membersOfRoot(graph, "Managers");
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

Node nodeAt(const Graph& graph, std::uint16_t nodeIndex) {
  const std::vector<NodeSystems> nodes = nodesOf(graph);
  if (nodeIndex >= nodes.size()) {
    return {};
  }
  Node node = withChassis(graph, nodes[nodeIndex], nodes);
  if (node.system != nullptr) {
    node.managers = managersOf(graph, node, nodes);
  }
  return node;
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
