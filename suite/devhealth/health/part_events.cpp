#include "suite/devhealth/health/part_events.h"

#include <algorithm>
#include <unordered_set>

#include "suite/devhealth/health/holders.h"
#include "suite/devhealth/health/noteworthy.h"
#include "suite/devhealth/parts/health_text.h"
#include "suite/devhealth/parts/odata_type.h"
#include "suite/devhealth/parts/part_list.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"
#include "suite/redfish/graph/service_conditions.h"

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

// What a part says of itself without a condition.
struct Statement {
  Health severity = Health::kUnknown;  // What it amounts to.
  Health health = Health::kUnknown;    // What it says.
  bool failurePredicted = false;
};

// What a holder or an aggregate says, of itself and all below it.
Statement statementOfHolder(const json::object& holder) {
  const Health health = redfish::holderHealth(holder);
  return {health, health, false};
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
  const bool predicted =
      failing != nullptr && failing->is_bool() && failing->get_bool();
  const bool degraded = health == Health::kUnknown &&
                        redfish::stringAt(part, "Status/State") == "Degraded";
  return {predicted || degraded ? Health::kWarning : health, health, predicted};
}

// The name of the property by which parts of a kind are told apart.
std::string_view locatorOf(const Uri& uri, const json::object& part) {
  const std::string_view type = odataTypeOf(part).type;
  if (type == "Processor") {
    return "Socket";
  }
  if (type == "Memory") {
    return "DeviceLocator";
  }
  return uri.fragment().substr(0, 6) == "/Fans/" ? "FanName" : "";
}

// What a component is called. The parts of a system that stand for all of a
// kind have no names.
std::string nameOf(const Uri& uri, const json::object& part,
                   SiblingNames& names) {
  if (uri.fragment() == kProcessorSummary) {
    return "Processors";
  }
  if (uri.fragment() == kMemorySummary) {
    return "Memory";
  }
  return displayName(part, uri, names.of(uri), locatorOf(uri, part));
}

// The links of an aggregate to parts that lie elsewhere.
std::vector<Uri> partsElsewhere(const Graph& graph, const Uri& uri,
                                const json::object& part) {
  if (uri.fragment().empty()) {
    return redfish::linksAt(part, "Drives");
  }
  const Resource* system = graph.find(uri.document());
  if (system == nullptr) {
    return {};
  }
  return redfish::linksAt(
      system->body, uri.fragment() == kMemorySummary ? "Memory" : "Processors");
}

Event healthEvent(const Uri& uri, const json::object& part,
                  const Statement& statement, std::string_view name) {
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

struct Component {
  Uri uri;
  const json::object* part;
  Statement statement;
};

bool belongsTo(const Node& node, const Resource& holder) {
  const auto isIt = [&holder](const Resource* own) { return own == &holder; };
  return node.system == &holder ||
         std::any_of(node.chassis.begin(), node.chassis.end(), isIt) ||
         std::any_of(node.managers.begin(), node.managers.end(), isIt);
}

// Components that state trouble, the innermost first.
std::vector<Component> troubledComponents(const Graph& graph, const Node& node,
                                          const NodeScope& scope) {
  std::vector<Component> components;
  std::unordered_set<std::string> seen;
  for (const auto& entry : graph.resources()) {
    const std::string& key = entry.first;
    const Resource& resource = entry.second;
    if (resource.state != ResourceState::kRead || !scope.holds(key)) {
      continue;
    }
    const bool holder = isSystemChassisOrManager(resource);
    // Other systems of the service, such as one inside a card, and the chassis
    // around this node's do not speak for the node.
    if (holder && !belongsTo(node, resource)) {
      continue;
    }
    forEachNoteworthy(resource, [&](const Uri& uri, const json::object& part) {
      if (&part == &resource.body && holder) {
        return;
      }
      const Statement statement = statementOf(uri, part);
      if (statement.severity < Health::kWarning) {
        return;
      }
      if (uri.document() != key && graph.resolve(uri).object != nullptr) {
        return;
      }
      if (!seen.insert(uri.identity()).second) {
        return;
      }
      components.push_back({uri, &part, statement});
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

Health worstIn(const FoundSeverities& found, const std::vector<Uri>& places) {
  Health worst = Health::kUnknown;
  for (const Uri& place : places) {
    worst = std::max(worst, found.worstWithin(place.identity()));
  }
  return worst;
}

}  // namespace

std::vector<Event> componentEvents(const Graph& graph, const Node& node,
                                   const NodeScope& scope,
                                   FoundSeverities& found) {
  std::vector<Event> events;
  SiblingNames names(graph);
  for (const Component& component : troubledComponents(graph, node, scope)) {
    const auto& [uri, part, statement] = component;
    Health explained = found.worstWithin(uri.identity());
    if (isAggregate(uri, *part)) {
      explained = std::max(explained,
                           worstIn(found, partsElsewhere(graph, uri, *part)));
    }
    if (explained >= statement.severity) {
      continue;
    }
    events.push_back(
        healthEvent(uri, *part, statement, nameOf(uri, *part, names)));
    found.add(uri, statement.severity);
  }
  return events;
}

std::vector<Event> holderEvents(const Graph& graph, const Node& node,
                                const FoundSeverities& found,
                                std::set<std::string>& skipped) {
  std::vector<Event> events;
  SiblingNames names(graph);
  const Holders holders(graph, node);
  const auto troubled = [](const Resource& holder) {
    return redfish::holderHealth(holder.body) >= Health::kWarning;
  };
  const auto explain = [&](const Resource& holder,
                           const std::vector<Uri>& places) {
    const Statement statement = statementOfHolder(holder.body);
    if (worstIn(found, places) >= statement.severity) {
      return true;
    }
    events.push_back(healthEvent(
        holder.uri, holder.body, statement,
        displayName(holder.body, holder.uri, names.of(holder.uri))));
    return false;
  };

  if (troubled(*node.system) && !explain(*node.system, holders.inSystem())) {
    holders.skippedInSystem(skipped);
  }
  for (const Resource* chassis : node.chassis) {
    if (troubled(*chassis) && !explain(*chassis, holders.inChassis(*chassis))) {
      holders.skippedInChassis(*chassis, skipped);
    }
  }
  for (const Resource* manager : node.managers) {
    if (troubled(*manager)) {
      explain(*manager, {manager->uri});
    }
  }
  return events;
}

}  // namespace devhealth
