#include "suite/devhealth/health/component.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <unordered_set>

#include "suite/base/ascii.h"
#include "suite/devhealth/health/needs_attention.h"
#include "suite/devhealth/parts/health_text.h"
#include "suite/devhealth/parts/names/part_class.h"
#include "suite/devhealth/parts/odata_type.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"
#include "suite/redfish/graph/service_conditions.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Health;
using redfish::Node;
using redfish::Resource;
using redfish::ResourceState;
using redfish::Uri;

// Parts of a system that stand for all its parts of a kind.
constexpr std::string_view kProcessorSummary = "/ProcessorSummary";
constexpr std::string_view kMemorySummary = "/MemorySummary";

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() &&
         text.substr(text.size() - end.size()) == end;
}

bool isSystemChassisOrManager(const Resource& resource) {
  const std::string_view type = odataTypeOf(resource.body).type;
  if (!type.empty()) {
    return type == "ComputerSystem" || type == "Chassis" || type == "Manager";
  }
  const std::string_view folder = redfish::parentOf(resource.uri.document());
  return endsWith(folder, "/Systems") || endsWith(folder, "/Chassis") ||
         endsWith(folder, "/Managers");
}

// A part that stands for all the parts below it: its roll-up counts, not only
// its own health.
bool isAggregate(const Uri& uri, const json::object& part) {
  if (!uri.fragment().empty()) {
    return uri.fragment() == kProcessorSummary ||
           uri.fragment() == kMemorySummary;
  }
  const std::string_view type = odataTypeOf(part).type;
  return type == "ThermalSubsystem" || type == "PowerSubsystem" ||
         type == "Storage" || type == "Thermal" || type == "Power";
}

// A part whose trouble healthy machines report: metering and limits of power,
// and bays without anything in them.
bool isQuiet(const Uri& uri, const json::object& part) {
  constexpr std::string_view kPowerControl = "/PowerControl";
  return base::startsWith(uri.fragment(), kPowerControl) ||
         (redfish::isAbsent(part) && !hasIdentity(part));
}

Statement statementOf(const Uri& uri, const json::object& part) {
  if (isAggregate(uri, part)) {
    return statementOfHolder(part);
  }
  const Health health = partHealth(part);
  if (health >= Health::kWarning) {
    return {health, health, false};
  }
  const json::value* failing = part.if_contains("FailurePredicted");
  const bool predicted = failing != nullptr && failing->is_bool() &&
                         failing->get_bool() && !redfish::isAbsent(part);
  const bool degraded = health == Health::kUnknown &&
                        redfish::stringAt(part, "Status/State") == "Degraded";
  return {predicted || degraded ? Health::kWarning : health, health, predicted};
}

// The systems, chassis and managers of a node.
std::unordered_set<const Resource*> holdersOf(const Node& node) {
  std::unordered_set<const Resource*> own(node.systems.begin(),
                                          node.systems.end());
  own.insert(node.chassis.begin(), node.chassis.end());
  own.insert(node.managers.begin(), node.managers.end());
  return own;
}

// The link of the resource that a part says to be; of its place otherwise.
Uri ownLink(const Uri& place, const json::object& part) {
  const auto own = Uri::parse(redfish::stringAt(part, "@odata.id"));
  return own && own->document() != place.document() ? *own : place;
}

bool anyTroubled(const json::array& groups) {
  return std::any_of(
      groups.begin(), groups.end(), [](const json::value& value) {
        const json::object* group = value.if_object();
        return group != nullptr &&
               redfish::rollup(*group, "Status") >= Health::kWarning;
      });
}

// Whether a redundancy group in one of the lists of a document is in trouble.
bool hasLostGroup(const json::object& document) {
  return std::any_of(
      document.begin(), document.end(), [](const json::key_value_pair& member) {
        const std::string_view name(member.key().data(), member.key().size());
        const json::array* groups = member.value().if_array();
        return groups != nullptr && endsWith(name, "Redundancy") &&
               anyTroubled(*groups);
      });
}

}  // namespace

Statement statementOfHolder(const json::object& holder) {
  const Health health = redfish::holderHealth(holder);
  return {health, health, false};
}

Event healthEvent(const Uri& uri, const json::object& part,
                  const Statement& statement, const std::string& name) {
  Event event;
  event.origin = uri;
  event.source = EventSource::kHealth;
  event.severity = statement.severity;
  event.messageId = "ResourceEvent.1.0.ResourceStatusChanged";
  event.messageId += healthWord(statement.severity);
  event.id = parseMessageId(event.messageId);
  event.message = name;
  event.message += ": ";
  if (statement.failurePredicted) {
    event.message += "a failure is predicted, ";
  }
  event.message += "health is ";
  event.message += healthWord(statement.health);
  const std::string state = textAt(part, "Status/State");
  if (!state.empty()) {
    event.message += ", state " + state;
  }
  event.message += '.';
  return event;
}

std::vector<Component> troubledComponents(const Graph& graph, const Node& node,
                                          const NodeScope& scope) {
  std::vector<Component> components;
  std::unordered_set<std::string> seen;
  const std::unordered_set<const Resource*> own = holdersOf(node);
  for (const auto& entry : graph.resources()) {
    const std::string& key = entry.first;
    const Resource& resource = entry.second;
    if (resource.state != ResourceState::kRead || !scope.holds(key)) {
      continue;
    }
    const bool holder = isSystemChassisOrManager(resource);
    // Other systems of the service, such as one inside a card, and the chassis
    // around this node's do not speak for the node.
    if (holder && own.count(&resource) == 0) {
      continue;
    }
    forEachNeedingAttention(
        resource, [&](const Uri& uri, const json::object& part) {
          if (&part == &resource.body && holder) {
            return;
          }
          const Statement statement = statementOf(uri, part);
          if (statement.severity < Health::kWarning) {
            return;
          }
          const Uri link = ownLink(uri, part);
          // What was read as a resource of its own speaks for itself.
          if (link.document() != key && graph.resolve(link).object != nullptr) {
            return;
          }
          if (seen.insert(link.identity()).second) {
            components.push_back({uri,
                                  link,
                                  &part,
                                  statement,
                                  isAggregate(uri, part),
                                  isQuiet(uri, part),
                                  {}});
          }
        });
  }
  const auto depth = [](const Component& component) {
    const std::string identity = component.uri.identity();
    return std::count(identity.begin(), identity.end(), '/');
  };
  std::stable_sort(components.begin(), components.end(),
                   [&depth](const Component& left, const Component& right) {
                     return depth(left) > depth(right);
                   });
  return components;
}

bool LostRedundancy::isBeside(const Uri& part) {
  std::string_view key = part.document();
  if (part.fragment().empty()) {
    key = redfish::parentOf(redfish::parentOf(key));
  }
  const auto [known, isNew] = lost_.try_emplace(std::string(key), false);
  if (isNew) {
    const Resource* document = graph_.find(key);
    known->second = document != nullptr && hasLostGroup(document->body);
  }
  return known->second;
}

std::vector<Uri> partsElsewhere(const Graph& graph,
                                const Component& aggregate) {
  const Uri& uri = aggregate.uri;
  if (uri.fragment().empty()) {
    return redfish::linksAt(*aggregate.part, "Drives");
  }
  const Resource* system = graph.find(uri.document());
  if (system == nullptr) {
    return {};
  }
  return redfish::linksAt(
      system->body, uri.fragment() == kMemorySummary ? "Memory" : "Processors");
}

}  // namespace devhealth
