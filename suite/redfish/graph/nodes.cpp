#include "suite/redfish/graph/nodes.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "suite/base/filler.h"
#include "suite/base/natural_order.h"

namespace redfish {
namespace {

// A member of Systems, with what it is sorted by.
struct Member {
  const Resource* system = nullptr;
  std::string name;
};

// The Id of a system; without one the last segment of its link.
std::string nameOf(const Resource* system, const Uri& link) {
  std::string_view id;
  if (isRead(system)) {
    id = stringAt(system->body, "Id");
  }
  return std::string(id.empty() ? link.lastSegment() : id);
}

std::vector<Member> allMembers(const Graph& graph) {
  const Resource* root = serviceRoot(graph);
  const Resource* collection =
      root == nullptr ? nullptr : graph.follow(root->body, "Systems").document;
  if (collection == nullptr) {
    return {};
  }
  std::vector<Member> members;
  std::set<std::string> seen;
  for (const Uri& link : linksAt(collection->body, "Members")) {
    if (seen.insert(link.document()).second) {
      const Resource* system = graph.find(link.document());
      members.push_back({system, nameOf(system, link)});
    }
  }
  return members;
}

// A system that only exists inside, or as a part of, another machine.
bool isNoMachine(const Member& member) {
  static constexpr std::array<std::string_view, 5> kTypes = {
      "Virtual", "OS", "VirtuallyPartitioned", "DPU", "Composed"};
  return isRead(member.system) &&
         std::find(kTypes.begin(), kTypes.end(),
                   stringAt(member.system->body, "SystemType")) != kTypes.end();
}

// Whether a system is started and set up by itself.
bool isWhole(const Resource& system) {
  const std::string_view version = stringAt(system.body, "BiosVersion");
  return objectAt(system.body, "Boot") != nullptr ||
         memberAt(system.body, "Actions/#ComputerSystem.Reset") != nullptr ||
         linkAt(system.body, "Bios").has_value() ||
         (version.find_first_not_of(' ') != std::string_view::npos &&
          !base::isFiller(version));
}

// The systems in the order of their numbers, parts still among them.
std::vector<const Resource*> machines(const Graph& graph) {
  const std::vector<Member> all = allMembers(graph);
  std::vector<Member> chosen;
  std::copy_if(all.begin(), all.end(), std::back_inserter(chosen),
               [](const Member& member) { return !isNoMachine(member); });
  if (chosen.empty()) {
    chosen = all;
  }
  std::stable_sort(chosen.begin(), chosen.end(),
                   [](const Member& left, const Member& right) {
                     return base::naturallyBefore(left.name, right.name);
                   });
  std::vector<const Resource*> systems;
  systems.reserve(chosen.size());
  for (const Member& member : chosen) {
    systems.push_back(member.system);
  }
  return systems;
}

// The systems that were read, by whether they are whole.
struct Sorted {
  std::vector<const Resource*> whole;
  std::vector<const Resource*> boards;  // Not whole.
};

Sorted sorted(const std::vector<const Resource*>& systems) {
  Sorted result;
  for (const Resource* system : systems) {
    if (isRead(system)) {
      (isWhole(*system) ? result.whole : result.boards).push_back(system);
    }
  }
  return result;
}

// Which machine each board is a part of.
class Owners {
 public:
  Owners(const ChassisLinks& links, const std::vector<const Resource*>& whole)
      : links_(links) {
    if (whole.size() == 1) {
      only_ = whole.front();
      return;
    }
    for (const Resource* system : whole) {
      for (const Resource* chassis : links.chassisOf(*system)) {
        const auto [owner, isNew] = byChassis_.try_emplace(chassis, system);
        if (!isNew) {
          owner->second = nullptr;
        }
      }
    }
  }

  // Null: the board is a machine of its own.
  const Resource* of(const Resource& board) const {
    if (only_ != nullptr) {
      return only_;
    }
    const Resource* owner = nullptr;
    for (const Resource* chassis : links_.chassisOf(board)) {
      const auto found = byChassis_.find(chassis);
      if (found == byChassis_.end() || found->second == owner) {
        continue;
      }
      if (found->second == nullptr || owner != nullptr) {
        return nullptr;
      }
      owner = found->second;
    }
    return owner;
  }

 private:
  const ChassisLinks& links_;
  const Resource* only_ = nullptr;
  // The machine that a chassis is linked with; null: several.
  std::unordered_map<const Resource*, const Resource*> byChassis_;
};

}  // namespace

const Resource* serviceRoot(const Graph& graph) {
  return graph.findRead("/redfish/v1");
}

std::vector<const Resource*> membersOfRoot(const Graph& graph,
                                           std::string_view collection) {
  const Resource* root = serviceRoot(graph);
  const Resource* found =
      root == nullptr ? nullptr : graph.follow(root->body, collection).document;
  return isRead(found) ? readLinks(graph, *found, "Members")
                       : std::vector<const Resource*>();
}

std::vector<NodeSystems> nodesOf(const Graph& graph) {
  return nodesOf(graph, ChassisLinks(graph, membersOfRoot(graph, "Chassis")));
}

std::vector<NodeSystems> nodesOf(const Graph& graph,
                                 const ChassisLinks& links) {
  const std::vector<const Resource*> systems = machines(graph);
  const Sorted kinds = sorted(systems);
  const std::unordered_set<const Resource*> boards(kinds.boards.begin(),
                                                   kinds.boards.end());
  const Owners owners(links, kinds.whole);
  std::vector<NodeSystems> nodes;
  std::unordered_map<const Resource*, std::size_t> places;
  std::vector<std::pair<const Resource*, const Resource*>> parts;
  for (const Resource* system : systems) {
    const Resource* owner =
        boards.count(system) > 0 ? owners.of(*system) : nullptr;
    if (owner == nullptr) {
      places.emplace(system, nodes.size());
      nodes.push_back({system});
    } else {
      parts.emplace_back(owner, system);
    }
  }
  for (const auto& [owner, part] : parts) {
    nodes[places.at(owner)].push_back(part);
  }
  return nodes;
}

bool partsDependOnChassis(const Graph& graph) {
  const Sorted kinds = sorted(machines(graph));
  return kinds.whole.size() > 1 && !kinds.boards.empty();
}

}  // namespace redfish
