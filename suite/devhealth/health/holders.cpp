#include "suite/devhealth/health/holders.h"

#include <algorithm>

#include "suite/devhealth/health/health_walk.h"
#include "suite/redfish/graph/json.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Node;
using redfish::Resource;
using redfish::Uri;

bool holdsLink(const std::vector<Uri>& links, const Resource& wanted) {
  return std::any_of(links.begin(), links.end(), [&wanted](const Uri& link) {
    return link.document() == wanted.uri.document();
  });
}

}  // namespace

Holders::Holders(const Graph& graph, const Node& node)
    : graph_(graph), node_(node) {
  for (const Resource* chassis : node.chassis) {
    chassis_.emplace(chassis->uri.document(), chassis);
    if (const auto outer =
            redfish::linkAt(chassis->body, "Links/ContainedBy")) {
      containedBy_[outer->document()].push_back(chassis);
    }
  }
  systemPlaces_.push_back(node.system->uri);
  const json::object* all = graph.follow(node.system->body, "Storage").object;
  if (all == nullptr) {
    return;
  }
  for (const Uri& link : redfish::linksAt(*all, "Members")) {
    systemPlaces_.push_back(link);
    const json::object* storage = graph.resolve(link).object;
    if (storage == nullptr) {
      continue;
    }
    const auto drives = redfish::linksAt(*storage, "Drives");
    systemPlaces_.insert(systemPlaces_.end(), drives.begin(), drives.end());
  }
}

std::vector<Uri> Holders::inSystem() const {
  std::vector<Uri> places = systemPlaces_;
  for (const Resource* chassis : node_.chassis) {
    places.push_back(chassis->uri);
  }
  return places;
}

std::vector<Uri> Holders::inChassis(const Resource& chassis) const {
  std::vector<Uri> places{chassis.uri};
  for (const std::string_view path :
       {"Links/Drives", "Links/Storage", "Links/PCIeDevices"}) {
    const auto links = redfish::linksAt(chassis.body, path);
    places.insert(places.end(), links.begin(), links.end());
  }
  for (const Resource* card : inner(chassis)) {
    places.push_back(card->uri);
  }
  if (holdsSystem(chassis)) {
    places.insert(places.end(), systemPlaces_.begin(), systemPlaces_.end());
  }
  return places;
}

void Holders::skippedInSystem(std::set<std::string>& skipped) const {
  addSkippedOfSystem(graph_, *node_.system, skipped);
  for (const Resource* chassis : node_.chassis) {
    addSkippedOfChassis(graph_, *chassis, skipped);
  }
}

void Holders::skippedInChassis(const Resource& chassis,
                               std::set<std::string>& skipped) const {
  addSkippedOfChassis(graph_, chassis, skipped);
  for (const Resource* card : inner(chassis)) {
    addSkippedOfChassis(graph_, *card, skipped);
  }
  if (holdsSystem(chassis)) {
    addSkippedOfSystem(graph_, *node_.system, skipped);
  }
}

// The chassis of the node directly inside one of them.
std::vector<const Resource*> Holders::inner(const Resource& chassis) const {
  std::vector<const Resource*> inside;
  for (const Uri& link : redfish::linksAt(chassis.body, "Links/Contains")) {
    const auto card = chassis_.find(link.document());
    if (card != chassis_.end()) {
      inside.push_back(card->second);
    }
  }
  const auto more = containedBy_.find(chassis.uri.document());
  if (more != containedBy_.end()) {
    inside.insert(inside.end(), more->second.begin(), more->second.end());
  }
  return inside;
}

bool Holders::holdsSystem(const Resource& chassis) const {
  return holdsLink(redfish::linksAt(chassis.body, "Links/ComputerSystems"),
                   *node_.system) ||
         holdsLink(redfish::linksAt(node_.system->body, "Links/Chassis"),
                   chassis);
}

}  // namespace devhealth
