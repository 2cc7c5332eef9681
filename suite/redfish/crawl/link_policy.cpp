// Which links a crawl follows: the plan's rows held against what is known.
#include <algorithm>

#include "suite/redfish/crawl/crawl.h"
#include "suite/redfish/graph/part_models.h"
#include "suite/redfish/graph/service_conditions.h"
#include "suite/redfish/graph/status.h"

namespace redfish {
namespace {

bool startsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

bool contains(const std::vector<const Resource*>& resources,
              const Resource& wanted) {
  return std::find(resources.begin(), resources.end(), &wanted) !=
         resources.end();
}

}  // namespace

Crawl::Decision Crawl::decide(const Rule& rule, const Resource& resource) {
  const Decision belonging = belongs(rule.from, resource);
  if (belonging != Decision::kEnter) {
    return belonging;
  }
  if (mayComeExpanded(rule)) {
    return Decision::kWait;
  }
  if ((rule.wants & bits_ & ~static_cast<std::uint32_t>(kWantHealth)) == 0) {
    const Decision walking = walk();
    if (walking != Decision::kEnter) {
      return walking;
    }
    if (!rule.rollup.empty() && !thorough_ && !isUnexplained(resource) &&
        rollup(resource.body, rule.rollup) == Health::kOk) {
      return Decision::kSkip;
    }
  }
  return condition(rule, resource);
}

Crawl::Decision Crawl::belongs(Kind kind, const Resource& resource) {
  if (kind != Kind::kSystem && kind != Kind::kChassis) {
    return Decision::kEnter;
  }
  // The number of a node counts all systems that are machines.
  if (!drained_ && waitingFor({Kind::kSystems, Kind::kSystem})) {
    return Decision::kWait;
  }
  if (kind == Kind::kSystem) {
    return node().system == &resource ? Decision::kEnter : Decision::kSkip;
  }
  const bool chassisComing =
      waitingFor({Kind::kChassisCollection, Kind::kChassis});
  const Resource* system = node().system;
  if (system == nullptr) {
    return Decision::kSkip;
  }
  // Without links of its own the system has the chassis that name it, and
  // only when there are none, all of them.
  const auto naming = linksAt(resource.body, "Links/ComputerSystems");
  const bool certain =
      !chassisComing || drained_ ||
      !linksAt(system->body, "Links/Chassis").empty() ||
      std::any_of(naming.begin(), naming.end(), [&](const Uri& link) {
        return link.document() == system->uri.document();
      });
  if (certain && contains(node().chassis, resource)) {
    return Decision::kEnter;
  }
  // It may still turn out to stand inside one of the node's chassis.
  return drained_ ? Decision::kSkip : Decision::kWait;
}

bool Crawl::mayComeExpanded(const Rule& rule) const {
  if (!knowledge_.expand.usable() || drained_ || isCollection(rule.from)) {
    return false;
  }
  return (rule.to == Kind::kChassis &&
          waitingFor({Kind::kChassisCollection})) ||
         (rule.to == Kind::kManager && waitingFor({Kind::kManagers}));
}

Crawl::Decision Crawl::walk() {
  if (walk_) {
    return *walk_;
  }
  if (thorough_ || !selection_.unexplained.empty()) {
    walk_ = Decision::kEnter;
    return *walk_;
  }
  if (serviceConditions(knowledge_.graph) == nullptr) {
    if (!drained_ && waitingFor({Kind::kServiceConditions})) {
      return Decision::kWait;
    }
    walk_ = Decision::kEnter;
    return *walk_;
  }
  if (!drained_ &&
      waitingFor({Kind::kSystems, Kind::kSystem, Kind::kChassisCollection,
                  Kind::kChassis, Kind::kManagers, Kind::kManager})) {
    return Decision::kWait;
  }
  walk_ = serviceConditionsSuffice(knowledge_.graph, node()) ? Decision::kSkip
                                                             : Decision::kEnter;
  return *walk_;
}

Crawl::Decision Crawl::condition(const Rule& rule, const Resource& resource) {
  const Graph& graph = knowledge_.graph;
  const json::object& body = resource.body;
  const bool nodeUnknown = node().system == nullptr;
  const auto systemNames = [&](std::string_view path) {
    return nodeUnknown ? std::vector<Uri>()
                       : linksAt(node().system->body, path);
  };
  switch (rule.condition) {
    case Condition::kAlways:
      return Decision::kEnter;

    case Condition::kNoSpeed: {
      const json::value* speed = memberAt(body, "OperatingSpeedMHz");
      return speed == nullptr || speed->is_null() ? Decision::kEnter
                                                  : Decision::kSkip;
    }

    case Condition::kNoNewFans:
    case Condition::kNoNewSupplies: {
      const bool fans = rule.condition == Condition::kNoNewFans;
      const std::string_view subsystem =
          fans ? "ThermalSubsystem" : "PowerSubsystem";
      if (!linkAt(body, subsystem)) {
        return Decision::kEnter;
      }
      if (!drained_) {
        return Decision::kWait;
      }
      if (graph.follow(body, subsystem).object == nullptr) {
        return Decision::kEnter;
      }
      // For health alone the parts may have been left unread on purpose.
      const std::uint32_t want = fans ? kWantFans : kWantPowers;
      return whenDrained((bits_ & want) != 0 &&
                         !subsystemHasParts(graph, body, subsystem,
                                            fans ? "Fans" : "PowerSupplies"));
    }

    case Condition::kAfterChassisDevices:
      if (knowledge_.expand.usable() && !drained_) {
        if (waitingFor({Kind::kChassisCollection, Kind::kChassis})) {
          return Decision::kWait;
        }
        for (const Resource* chassis : node().chassis) {
          const auto link = linkAt(chassis->body, "PCIeDevices");
          if (link && graph.find(link->document()) == nullptr) {
            return Decision::kWait;
          }
        }
      }
      return Decision::kEnter;

    case Condition::kNoSystemDevices:
      if (systemNames("PCIeDevices").empty() || knowledge_.expand.usable()) {
        return Decision::kEnter;
      }
      return whenDrained(!anyExists(graph, node().system->body, "PCIeDevices"));

    case Condition::kNoChassisDevices: {
      const auto collection = linkAt(body, "PCIeDevices");
      if (systemNames("PCIeDevices").empty() && !collection) {
        return Decision::kEnter;
      }
      if (!drained_) {
        return Decision::kWait;
      }
      if (anyExists(graph, node().system->body, "PCIeDevices")) {
        return Decision::kSkip;
      }
      if (!collection) {
        return Decision::kEnter;
      }
      const Resource* devices = graph.find(collection->document());
      if (devices == nullptr) {
        return Decision::kWait;
      }
      return whenDrained(!anyExists(graph, devices->body, "Members"));
    }

    case Condition::kNoFansSoFar:
      return drained_ ? whenDrained(!hasFans(graph, node())) : Decision::kWait;

    case Condition::kNoPowerSoFar:
      return drained_ ? whenDrained(!hasPowerSupplies(graph, node()))
                      : Decision::kWait;
  }
  return Decision::kSkip;
}

Crawl::Decision Crawl::whenDrained(bool enter) const {
  if (!drained_) {
    return Decision::kWait;
  }
  return enter ? Decision::kEnter : Decision::kSkip;
}

bool Crawl::isUnexplained(const Resource& resource) const {
  const std::string& document = resource.uri.document();
  return std::any_of(
      selection_.unexplained.begin(), selection_.unexplained.end(),
      [&](const std::string& holder) {
        return document == holder || startsWith(document, holder + "/");
      });
}

const Node& Crawl::node() {
  if (!node_) {
    node_ = nodeAt(knowledge_.graph, selection_.nodeIndex);
  }
  return *node_;
}

bool Crawl::waitingFor(std::initializer_list<Kind> kinds) const {
  return std::any_of(kinds.begin(), kinds.end(),
                     [this](Kind kind) { return waiting_[index(kind)] > 0; });
}

}  // namespace redfish
