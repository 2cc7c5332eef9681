#include "suite/redfish/graph/topology.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace redfish {
namespace {

// Chassis inside chassis deeper than this are not followed.
constexpr int kMaxContainment = 8;

const Resource* readOrNull(const Resource* resource) {
  return resource != nullptr && resource->state == ResourceState::kRead
             ? resource
             : nullptr;
}

// Resources that the links at a path lead to, as far as they were read.
std::vector<const Resource*> readAt(const Graph& graph, const Resource& holder,
                                    std::string_view path) {
  std::vector<const Resource*> found;
  for (const Uri& link : linksAt(holder.body, path)) {
    if (const auto* resource = readOrNull(graph.find(link.document()))) {
      found.push_back(resource);
    }
  }
  return found;
}

// Members of one of the service root's collections, as far as read.
std::vector<const Resource*> membersOfRoot(const Graph& graph,
                                           std::string_view collection) {
  const Resource* root = readOrNull(serviceRoot(graph));
  if (root == nullptr) {
    return {};
  }
  const Resource* found =
      readOrNull(graph.follow(root->body, collection).document);
  if (found == nullptr) {
    return {};
  }
  return readAt(graph, *found, "Members");
}

bool names(const Resource& holder, std::string_view path,
           const Resource& wanted) {
  const auto links = linksAt(holder.body, path);
  return std::any_of(links.begin(), links.end(), [&](const Uri& link) {
    return link.document() == wanted.uri.document();
  });
}

// A system that only exists inside, or as a part of, another machine.
bool isNoMachine(const Resource& system) {
  static constexpr std::array<std::string_view, 5> kTypes = {
      "Virtual", "OS", "VirtuallyPartitioned", "DPU", "Composed"};
  const std::string_view type = stringAt(system.body, "SystemType");
  return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

// Adds resources in order, each once.
class OrderedSet {
 public:
  bool add(const Resource* resource) {
    if (!seen_.insert(resource).second) {
      return false;
    }
    order_.push_back(resource);
    return true;
  }
  std::vector<const Resource*>& order() { return order_; }

 private:
  std::set<const Resource*> seen_;
  std::vector<const Resource*> order_;
};

std::vector<const Resource*> chassisOf(const Graph& graph, const Node& node) {
  const auto all = membersOfRoot(graph, "Chassis");
  OrderedSet chosen;
  for (const Resource* chassis : readAt(graph, *node.system, "Links/Chassis")) {
    chosen.add(chassis);
  }
  if (chosen.order().empty()) {
    for (const Resource* chassis : all) {
      if (names(*chassis, "Links/ComputerSystems", *node.system)) {
        chosen.add(chassis);
      }
    }
  }
  if (chosen.order().empty() && node.alone) {
    for (const Resource* chassis : all) {
      chosen.add(chassis);
    }
  }

  // A chassis that another node claims and this one does not stays out; a
  // card that lists only a system of its own, such as a DPU, stays in.
  std::set<std::string_view> otherNodes;
  for (const Resource* system : eligibleSystems(graph)) {
    if (system != nullptr && system != node.system) {
      otherNodes.insert(system->uri.document());
    }
  }
  const auto isOthers = [&](const Resource& chassis) {
    bool others = false;
    for (const Uri& link : linksAt(chassis.body, "Links/ComputerSystems")) {
      if (link.document() == node.system->uri.document()) {
        return false;
      }
      others = others || otherNodes.count(link.document()) > 0;
    }
    return others;
  };

  std::map<std::string, std::vector<const Resource*>> heldBy;
  for (const Resource* chassis : all) {
    for (const Uri& holder : linksAt(chassis->body, "Links/ContainedBy")) {
      heldBy[holder.document()].push_back(chassis);
    }
  }

  std::size_t begin = 0;
  for (int depth = 0; depth < kMaxContainment; ++depth) {
    const std::size_t end = chosen.order().size();
    for (std::size_t i = begin; i < end; ++i) {
      const Resource* holder = chosen.order()[i];
      auto inside = readAt(graph, *holder, "Links/Contains");
      const auto& held = heldBy[holder->uri.document()];
      inside.insert(inside.end(), held.begin(), held.end());
      for (const Resource* inner : inside) {
        if (!isOthers(*inner)) {
          chosen.add(inner);
        }
      }
    }
    if (chosen.order().size() == end) {
      break;
    }
    begin = end;
  }
  return chosen.order();
}

std::vector<const Resource*> managersOf(const Graph& graph, const Node& node) {
  OrderedSet chosen;
  for (const Resource* manager :
       readAt(graph, *node.system, "Links/ManagedBy")) {
    chosen.add(manager);
  }
  if (!chosen.order().empty()) {
    return chosen.order();
  }
  for (const Resource* chassis : node.chassis) {
    for (const Resource* manager : readAt(graph, *chassis, "Links/ManagedBy")) {
      chosen.add(manager);
    }
  }
  if (!chosen.order().empty()) {
    return chosen.order();
  }
  if (const Resource* root = readOrNull(serviceRoot(graph))) {
    if (const Resource* own =
            readOrNull(graph.follow(root->body, "Links/ManagerProvidingService")
                           .document)) {
      return {own};
    }
  }
  auto all = membersOfRoot(graph, "Managers");
  if (all.size() != 1) {
    all.clear();
  }
  return all;
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
  if (node.system != nullptr) {
    links.addAll(*node.system, suppliedBy);
  }
  for (const Resource* chassis : node.chassis) {
    links.addAll(*chassis, suppliedBy);
    links.addAll(*chassis, parts);
  }
  return links.take();
}

}  // namespace

const Resource* serviceRoot(const Graph& graph) {
  return graph.find("/redfish/v1");
}

std::vector<const Resource*> eligibleSystems(const Graph& graph) {
  const Resource* root = readOrNull(serviceRoot(graph));
  if (root == nullptr) {
    return {};
  }
  const Resource* collection =
      readOrNull(graph.follow(root->body, "Systems").document);
  if (collection == nullptr) {
    return {};
  }

  std::vector<const Resource*> all;
  std::set<std::string> seen;
  for (const Uri& link : linksAt(collection->body, "Members")) {
    if (seen.insert(link.document()).second) {
      all.push_back(graph.find(link.document()));
    }
  }
  std::vector<const Resource*> machines;
  std::copy_if(all.begin(), all.end(), std::back_inserter(machines),
               [](const Resource* system) {
                 return readOrNull(system) == nullptr || !isNoMachine(*system);
               });
  return machines.empty() ? all : machines;
}

Node nodeAt(const Graph& graph, std::uint16_t nodeIndex) {
  Node node;
  const auto systems = eligibleSystems(graph);
  if (nodeIndex >= systems.size()) {
    return node;
  }
  node.system = readOrNull(systems[nodeIndex]);
  node.alone = systems.size() == 1;
  if (node.system == nullptr) {
    return node;
  }
  node.chassis = chassisOf(graph, node);
  node.managers = managersOf(graph, node);
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
    const Resource* inner = chassis;
    for (int depth = 0; depth < kMaxContainment && inner != nullptr; ++depth) {
      const auto outer = linkAt(inner->body, "Links/ContainedBy");
      if (!outer) {
        break;
      }
      if (own.count(outer->document()) == 0) {
        links.add(*outer);
      }
      inner = readOrNull(graph.find(outer->document()));
    }
  }
  return links.take();
}

}  // namespace redfish
