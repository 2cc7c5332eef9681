#include "suite/connection/service_nodes.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/topology.h"

namespace connection {
namespace {

constexpr std::size_t kMostNodes = std::numeric_limits<std::uint16_t>::max();

ServiceNode nodeOf(const redfish::Resource* system) {
  if (system == nullptr) {
    return {};
  }
  return {system->uri.target(),
          base::lowerCase(redfish::stringAt(system->body, "UUID"))};
}

}  // namespace

ServiceNodes readNodes(redfish::Service& service, std::uint32_t wants,
                       std::uint16_t index) {
  redfish::Selection selection;
  selection.nodeIndex = index;
  selection.wants = wants == 0 ? redfish::kWantSystem : wants;
  auto failure = service.read(selection);
  const std::vector<redfish::NodeSystems>& nodes = service.topology().nodes();
  const bool allKnown =
      !nodes.empty() && std::none_of(nodes.begin(), nodes.end(),
                                     [](const redfish::NodeSystems& systems) {
                                       return systems.front() == nullptr;
                                     });
  ServiceNodes found;
  // A node that cannot be read is a node still, and a service without any was
  // reached all the same: the calls that read them tell what is wrong.
  if (failure && !allKnown && failure->kind != base::FailureKind::kNoSystem) {
    found.failure = std::move(failure);
    return found;
  }
  for (const redfish::NodeSystems& systems : nodes) {
    if (found.nodes.size() < kMostNodes) {
      found.nodes.push_back(nodeOf(systems.front()));
    }
  }
  if (found.nodes.empty()) {
    found.nodes.emplace_back();
  }
  return found;
}

std::optional<base::Failure> checkServiceUuid(const redfish::Service& service,
                                              const std::string& expectedUuid) {
  const redfish::Resource* const root = redfish::serviceRoot(service.graph());
  if (expectedUuid.empty() || root == nullptr) {
    return std::nullopt;
  }
  const std::string uuid =
      base::lowerCase(redfish::stringAt(root->body, "UUID"));
  if (uuid.empty() || uuid == expectedUuid) {
    return std::nullopt;
  }
  return base::Failure{
      base::FailureKind::kNotRedfish, service.address(), "",
      "this is not the controller's service that the firmware names: its UUID "
      "is another one",
      "check the host interface in the controller, or name the service by "
      "source in [inband] of the settings"};
}

}  // namespace connection
