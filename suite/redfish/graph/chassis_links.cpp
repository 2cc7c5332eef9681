#include "suite/redfish/graph/chassis_links.h"

#include <utility>

namespace redfish {

ChassisLinks::ChassisLinks(const Graph& graph,
                           std::vector<const Resource*> members)
    : graph_(graph), members_(std::move(members)) {
  for (const Resource* chassis : members_) {
    for (const std::string& system : systemsOf(*chassis)) {
      naming_[system].push_back(chassis);
    }
    for (const Uri& outer : linksAt(chassis->body, "Links/ContainedBy")) {
      containedBy_[outer.document()].push_back(chassis);
    }
  }
}

const ChassisLinks::Named& ChassisLinks::of(const Resource& chassis) const {
  const auto [entry, isNew] = named_.try_emplace(&chassis);
  Named& named = entry->second;
  if (isNew) {
    for (const Uri& link : linksAt(chassis.body, "Links/ComputerSystems")) {
      named.namesReadSystem =
          named.namesReadSystem || graph_.findRead(link.document()) != nullptr;
      named.systems.push_back(link.document());
    }
    named.contained = readLinks(graph_, chassis, "Links/Contains");
  }
  return named;
}

const ChassisLinks::Ties& ChassisLinks::tiesOf(const Resource& system) const {
  const auto [entry, isNew] = ties_.try_emplace(&system);
  Ties& ties = entry->second;
  if (!isNew) {
    return ties;
  }
  const auto addEach = [&ties](const Chassis& chassis) {
    for (const Resource* one : chassis) {
      if (ties.all.insert(one).second) {
        ties.order.push_back(one);
      }
    }
  };
  addEach(readLinks(graph_, system, "Links/Chassis"));
  const auto naming = naming_.find(system.uri.document());
  if (naming != naming_.end()) {
    addEach(naming->second);
  }
  return ties;
}

std::vector<const Resource*> ChassisLinks::inside(
    const Resource& chassis) const {
  Chassis found = of(chassis).contained;
  const auto more = containedBy_.find(chassis.uri.document());
  if (more != containedBy_.end()) {
    found.insert(found.end(), more->second.begin(), more->second.end());
  }
  return found;
}

}  // namespace redfish
