#include "suite/redfish/crawl/link_policy.h"

#include <algorithm>
#include <boost/json/array.hpp>

#include "suite/base/numbers.h"
#include "suite/redfish/graph/document_path.h"
#include "suite/redfish/graph/service_conditions.h"
#include "suite/redfish/graph/status.h"

namespace redfish {
namespace {

constexpr std::string_view kDevices = "PCIeDevices";
constexpr std::string_view kLinkedDevices = "Links/PCIeDevices";
constexpr std::string_view kAdapters = "NetworkAdapters";

// Whether a value is a number above 0, or a text that is one.
bool isPositive(const json::value* value) {
  if (value == nullptr) {
    return false;
  }
  if (const json::string* text = value->if_string()) {
    const auto number = base::parseNumber<double>({text->data(), text->size()});
    return number && *number > 0;
  }
  return value->is_number() && value->to_number<double>() > 0;
}

Decision enterIf(bool enter) {
  return enter ? Decision::kEnter : Decision::kSkip;
}

}  // namespace

LinkPolicy::LinkPolicy(const ServiceKnowledge& knowledge,
                       const Selection& selection, const CrawlState& state)
    : knowledge_(knowledge),
      selection_(selection),
      state_(state),
      bits_(planBits(selection.wants)),
      thorough_((selection.wants & kWantThorough) != 0) {}

Decision LinkPolicy::decide(const Rule& rule, const Resource& resource) {
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
  return meets(rule.condition, resource);
}

Decision LinkPolicy::belongs(Kind kind, const Resource& resource) {
  switch (kind) {
    case Kind::kSystem:
      return systemBelongs(resource);
    case Kind::kChassis:
      return chassisBelongs(resource);
    default:
      return Decision::kEnter;
  }
}

Decision LinkPolicy::systemBelongs(const Resource& system) {
  // The number of a node counts all systems that are machines.
  if (!state_.drained &&
      (state_.isWaitingFor({Kind::kSystems, Kind::kSystem}) ||
       (chassisComing() && partsDepend()))) {
    return Decision::kWait;
  }
  static_cast<void>(node());
  return enterIf(members_.count(&system) > 0);
}

Decision LinkPolicy::chassisBelongs(const Resource& chassis) {
  if (!state_.drained && state_.isWaitingFor({Kind::kSystems, Kind::kSystem})) {
    return Decision::kWait;
  }
  if (node().system == nullptr) {
    return Decision::kSkip;
  }
  // Without links the chassis are told by their Ids, which takes all of them.
  const bool certain =
      state_.drained || !chassisComing() || node().chassisLinked;
  if (certain && members_.count(&chassis) > 0) {
    return Decision::kEnter;
  }
  // It may still turn out to stand inside one of the node's chassis.
  return whenDrained(false);
}

bool LinkPolicy::mayComeExpanded(const Rule& rule) const {
  if (!knowledge_.expand.usable() || state_.drained ||
      isCollection(rule.from)) {
    return false;
  }
  return (rule.to == Kind::kChassis &&
          state_.isWaitingFor({Kind::kChassisCollection})) ||
         (rule.to == Kind::kManager && state_.isWaitingFor({Kind::kManagers}));
}

Decision LinkPolicy::walk() {
  if (walk_) {
    return *walk_;
  }
  if (thorough_ || !selection_.unexplained.empty()) {
    walk_ = Decision::kEnter;
    return *walk_;
  }
  if (serviceConditions(knowledge_.graph) == nullptr) {
    if (!state_.drained && state_.isWaitingFor({Kind::kServiceConditions})) {
      return Decision::kWait;
    }
    walk_ = Decision::kEnter;
    return *walk_;
  }
  if (!state_.drained &&
      (chassisComing() ||
       state_.isWaitingFor(
           {Kind::kSystems, Kind::kSystem, Kind::kManagers, Kind::kManager}))) {
    return Decision::kWait;
  }
  walk_ = enterIf(!serviceConditionsSuffice(knowledge_.graph, node()));
  return *walk_;
}

bool LinkPolicy::isUnexplained(const Resource& resource) const {
  return liesWithinAny(resource.uri.document(), selection_.unexplained);
}

Decision LinkPolicy::meets(Condition condition, const Resource& resource) {
  switch (condition) {
    case Condition::kAlways:
      return Decision::kEnter;
    case Condition::kPartsUnclear:
      return partsUnclear();
    case Condition::kNoSpeed:
      return noSpeed(resource.body);
    case Condition::kNoNewFans:
      return noNewParts(resource.body, kFanSchema);
    case Condition::kNoNewSupplies:
      return noNewParts(resource.body, kPowerSupplySchema);
    case Condition::kAfterChassisDevices:
      return afterChassisDevices();
    case Condition::kNoSystemDevices:
      return noSystemDevices();
    case Condition::kNoChassisDevices:
      return noChassisDevices();
    case Condition::kNoReadableDevices:
      return noReadableDevices();
    case Condition::kNoChassisAdapters:
      return noChassisAdapters();
    case Condition::kNoControllerArray:
      return noControllerArray(resource.body);
    case Condition::kNoStorage:
      return noStorage();
    case Condition::kNoFansSoFar:
      return state_.drained ? enterIf(!nodeHas(Question::kFans))
                            : Decision::kWait;
    case Condition::kNoPowerSoFar:
      return state_.drained ? enterIf(!nodeHas(Question::kPowerSupplies))
                            : Decision::kWait;
  }
  return Decision::kSkip;
}

Decision LinkPolicy::partsUnclear() {
  if (!state_.drained && state_.isWaitingFor({Kind::kSystems, Kind::kSystem})) {
    return Decision::kWait;
  }
  return enterIf(partsDepend());
}

Decision LinkPolicy::noSpeed(const json::object& processor) {
  const std::string_view type = stringAt(processor, "ProcessorType");
  return enterIf(
      (type.empty() || type == "CPU") && !isAbsent(processor) &&
      !isPositive(memberAt(processor, "OperatingSpeedMHz")) &&
      !isPositive(memberAt(processor, "Oem/*/CurrentClockSpeedMHz")));
}

Decision LinkPolicy::noNewParts(const json::object& chassis,
                                const PartSchema& schema) const {
  const Graph& graph = knowledge_.graph;
  if (!linkAt(chassis, schema.subsystem)) {
    return Decision::kEnter;
  }
  if (!state_.drained) {
    return Decision::kWait;
  }
  const json::object* subsystem =
      graph.follow(chassis, schema.subsystem).object;
  if (subsystem == nullptr) {
    return Decision::kEnter;
  }
  // For health alone the parts may have been left unread on purpose.
  const auto parts = linkAt(*subsystem, schema.collection);
  if (parts && graph.find(parts->document()) == nullptr) {
    return Decision::kWait;
  }
  return enterIf(!subsystemHasParts(graph, chassis, schema));
}

Decision LinkPolicy::afterChassisDevices() {
  if (!knowledge_.expand.usable() || state_.drained) {
    return Decision::kEnter;
  }
  return chassisComing() || chassisLinksUnasked(kDevices) ? Decision::kWait
                                                          : Decision::kEnter;
}

Decision LinkPolicy::noSystemDevices() {
  if (!systemsLink(kDevices) || knowledge_.expand.usable()) {
    return Decision::kEnter;
  }
  return state_.drained ? enterIf(!systemDeviceExists()) : Decision::kWait;
}

Decision LinkPolicy::noChassisDevices() {
  if (!systemsLink(kDevices) && !chassisLink(kDevices) && !chassisComing()) {
    return Decision::kEnter;
  }
  if (!state_.drained) {
    return Decision::kWait;
  }
  if (systemDeviceExists()) {
    return Decision::kSkip;
  }
  return chassisLinksUnasked(kDevices)
             ? Decision::kWait
             : enterIf(!chassisMemberExists(kDevices));
}

Decision LinkPolicy::noReadableDevices() {
  if (!systemsLink(kDevices) && !chassisLink(kDevices) &&
      !chassisLink(kLinkedDevices) && !chassisComing()) {
    return Decision::kEnter;
  }
  if (!state_.drained) {
    return Decision::kWait;
  }
  if (systemDeviceExists()) {
    return Decision::kSkip;
  }
  if (chassisLinksUnasked(kDevices)) {
    return Decision::kWait;
  }
  // The links are followed where the collections have no member.
  if (!chassisMemberExists(kDevices)) {
    if (chassisLinksUnasked(kLinkedDevices)) {
      return Decision::kWait;
    }
    if (chassisDeviceExists()) {
      return Decision::kSkip;
    }
  }
  return enterIf(!chassisMemberRead(kDevices));
}

Decision LinkPolicy::noChassisAdapters() {
  if (!state_.drained) {
    return chassisComing() || chassisLink(kAdapters) ? Decision::kWait
                                                     : Decision::kEnter;
  }
  return chassisLinksUnasked(kAdapters)
             ? Decision::kWait
             : enterIf(!chassisMemberExists(kAdapters));
}

Decision LinkPolicy::noControllerArray(const json::object& storage) {
  const json::array* controllers = arrayAt(storage, "StorageControllers");
  return enterIf(controllers == nullptr || controllers->empty());
}

Decision LinkPolicy::noStorage() { return enterIf(!systemsLink("Storage")); }

void LinkPolicy::changed(const KindSet& kinds) {
  answers_.clear();
  if (kinds.test(index(Kind::kSystems)) || kinds.test(index(Kind::kSystem))) {
    node_.reset();
    partsUnclear_.reset();
  }
  if (kinds.test(index(Kind::kChassisCollection)) ||
      kinds.test(index(Kind::kChassis)) || kinds.test(index(Kind::kManagers)) ||
      kinds.test(index(Kind::kManager))) {
    ++changes_;
  }
}

// Finding the node looks at every chassis: it is found again for every chassis
// that comes only while they are few.
const Node& LinkPolicy::node() {
  constexpr std::size_t kFew = 16;
  const std::size_t known = knowledge_.graph.resources().size();
  const bool late = known < kFew || changes_ > known / 4 || state_.drained ||
                    !structureComing();
  if (!node_ || (changes_ > 0 && late)) {
    node_ = knowledge_.nodes.at(selection_.nodeIndex);
    members_.clear();
    members_.insert(node_->systems.begin(), node_->systems.end());
    members_.insert(node_->chassis.begin(), node_->chassis.end());
    changes_ = 0;
    answers_.clear();
  }
  return *node_;
}

bool LinkPolicy::partsDepend() {
  if (!partsUnclear_) {
    partsUnclear_ = knowledge_.nodes.partsDependOnChassis();
  }
  return *partsUnclear_;
}

bool LinkPolicy::structureComing() const {
  return state_.isWaitingFor({Kind::kSystems, Kind::kSystem,
                              Kind::kChassisCollection, Kind::kChassis,
                              Kind::kManagers, Kind::kManager});
}

// Whether chassis of the service are still to come.
bool LinkPolicy::chassisComing() {
  if (state_.isWaitingFor({Kind::kChassisCollection, Kind::kChassis})) {
    return true;
  }
  if (!chassisCollection_) {
    const Resource* root = serviceRoot(knowledge_.graph);
    if (root == nullptr) {
      return false;
    }
    const auto all = linkAt(root->body, "Chassis");
    chassisCollection_ = all ? all->document() : "";
  }
  if (!chassisCollection_->empty() &&
      knowledge_.graph.find(*chassisCollection_) != nullptr) {
    chassisCollection_->clear();
  }
  return !chassisCollection_->empty();
}

template <typename Test>
bool LinkPolicy::anySystem(Question question, std::string_view path,
                           Test test) {
  const auto& systems = node().systems;
  const auto [answer, isNew] = answers_.try_emplace({question, path}, false);
  if (isNew) {
    answer->second = std::any_of(
        systems.begin(), systems.end(),
        [&test](const Resource* system) { return test(system->body); });
  }
  return answer->second;
}

template <typename Test>
bool LinkPolicy::anyChassis(Question question, std::string_view path,
                            Test test) {
  const auto& all = node().chassis;
  const auto [answer, isNew] = answers_.try_emplace({question, path}, false);
  if (isNew) {
    answer->second = std::any_of(
        all.begin(), all.end(),
        [&test](const Resource* chassis) { return test(chassis->body); });
  }
  return answer->second;
}

bool LinkPolicy::nodeHas(Question parts) {
  const Node& all = node();
  const auto [answer, isNew] = answers_.try_emplace({parts, ""}, false);
  if (isNew) {
    answer->second = parts == Question::kFans
                         ? hasFans(knowledge_.graph, all)
                         : hasPowerSupplies(knowledge_.graph, all);
  }
  return answer->second;
}

bool LinkPolicy::systemsLink(std::string_view path) {
  return anySystem(Question::kSystemsLink, path,
                   [path](const json::object& system) {
                     return anyLinkAt(system, path, anyLink);
                   });
}

bool LinkPolicy::chassisLink(std::string_view path) {
  return anyChassis(Question::kChassisLink, path,
                    [path](const json::object& chassis) {
                      return anyLinkAt(chassis, path, anyLink);
                    });
}

bool LinkPolicy::systemDeviceExists() {
  return anySystem(Question::kSystemDeviceExists, kDevices,
                   [this](const json::object& system) {
                     return anyExists(knowledge_.graph, system, kDevices);
                   });
}

bool LinkPolicy::chassisDeviceExists() {
  return anyChassis(Question::kChassisDeviceExists, kLinkedDevices,
                    [this](const json::object& chassis) {
                      return anyExists(knowledge_.graph, chassis,
                                       kLinkedDevices);
                    });
}

bool LinkPolicy::chassisLinksUnasked(std::string_view path) {
  return anyChassis(Question::kChassisLinksUnasked, path,
                    [this, path](const json::object& chassis) {
                      return anyLinkAt(chassis, path, [this](const Uri& link) {
                        return knowledge_.graph.find(link.document()) ==
                               nullptr;
                      });
                    });
}

bool LinkPolicy::chassisMemberExists(std::string_view path) {
  return anyChassis(Question::kChassisMemberExists, path,
                    [this, path](const json::object& chassis) {
                      return anyMemberExists(knowledge_.graph, chassis, path);
                    });
}

bool LinkPolicy::chassisMemberRead(std::string_view path) {
  return anyChassis(
      Question::kChassisMemberRead, path,
      [this, path](const json::object& chassis) {
        const Resource* list = knowledge_.graph.follow(chassis, path).document;
        return list != nullptr &&
               !readLinks(knowledge_.graph, *list, "Members").empty();
      });
}

Decision LinkPolicy::whenDrained(bool enter) const {
  return state_.drained ? enterIf(enter) : Decision::kWait;
}

}  // namespace redfish
