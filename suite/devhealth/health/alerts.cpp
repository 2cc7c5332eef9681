#include "suite/devhealth/health/alerts.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "suite/devhealth/health/alert_category.h"
#include "suite/devhealth/health/conditions.h"
#include "suite/devhealth/health/health_walk.h"
#include "suite/devhealth/health/message_registry.h"
#include "suite/devhealth/health/message_text.h"
#include "suite/devhealth/health/part_events.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/service_conditions.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Health;
using redfish::Uri;
using Tarvex::DeviceHealth::Alert;

// Further resources asked for at once. Real services need a handful.
constexpr std::size_t kMaxWanted = 64;

// Gives an event what only its registry knows: severity and text. A text of
// the service's own that still holds placeholders gets its arguments.
void complete(Event& event, MessageRegistries& registries) {
  const bool lacks =
      event.severity == Health::kUnknown || event.message.empty();
  const json::object* entry = lacks ? registries.find(event.id) : nullptr;
  if (event.severity == Health::kUnknown) {
    for (const std::string_view name : {"MessageSeverity", "Severity"}) {
      if (entry == nullptr || event.severity != Health::kUnknown) {
        break;
      }
      event.severity = redfish::healthFromText(redfish::stringAt(*entry, name));
    }
    if (event.severity == Health::kUnknown) {
      event.severity = Health::kWarning;
    }
    if (event.severity == Health::kOk) {
      event.dropped = true;
    }
  }
  if (!event.message.empty()) {
    if (!event.arguments.empty()) {
      event.message = substituteArguments(event.message, event.arguments);
    }
    return;
  }
  if (entry != nullptr) {
    event.message =
        substituteArguments(plainTextAt(*entry, "Message"), event.arguments);
  }
  if (event.message.empty()) {
    event.message = keyWithArguments(event.id.key, event.arguments);
  }
  if (event.message.empty()) {
    event.message = std::string(event.origin.lastSegment()) +
                    ": the service reports a condition without a text.";
  }
}

report::Event reportEvent(const Event& event, AlertCategory category) {
  report::Event told;
  told.category = category;
  told.severity = event.severity == Health::kCritical
                      ? report::Health::kError
                      : report::Health::kWarning;
  told.messageId = event.messageId;
  told.message = plainText(event.message);
  told.origin = plainText(event.origin.identity());
  told.time = event.timestamp;
  return told;
}

struct Placed {
  AlertCategory category;
  std::string origin;
  const Event* event;
};

std::vector<report::Event> inOrder(const Graph& graph,
                                   const std::vector<const Event*>& events) {
  std::vector<Placed> placed;
  placed.reserve(events.size());
  for (const Event* event : events) {
    placed.push_back(
        {categoryOf(graph, event->origin), event->origin.identity(), event});
  }
  const auto key = [](const Placed& one) {
    return std::tie(one.category, one.event->source, one.origin,
                    one.event->messageId);
  };
  std::stable_sort(placed.begin(), placed.end(),
                   [&key](const Placed& left, const Placed& right) {
                     return key(left) < key(right);
                   });
  std::vector<report::Event> told;
  told.reserve(placed.size());
  for (const Placed& one : placed) {
    told.push_back(reportEvent(*one.event, one.category));
  }
  return told;
}

// The first of each place, up to the limit.
std::vector<Uri> eachOnce(std::vector<Uri> links) {
  std::unordered_set<std::string> seen;
  std::vector<Uri> once;
  for (Uri& link : links) {
    if (once.size() == kMaxWanted) {
      break;
    }
    if (seen.insert(link.document()).second) {
      once.push_back(std::move(link));
    }
  }
  return once;
}

// What the service's own conditions tell.
struct Told {
  FoundSeverities found;            // By the parts that they come from.
  std::vector<const Event*> kept;   // Of the node.
  Health worst = Health::kUnknown;  // Of those.
};

Told toldOf(EventList& conditions, const NodeScope& scope,
            MessageRegistries& registries) {
  Told told;
  for (Event& event : conditions.events()) {
    if (event.dropped) {
      continue;
    }
    const bool own = scope.holds(event.origin.document());
    if (own) {
      complete(event, registries);
    }
    if (event.dropped) {
      continue;
    }
    const Health severity = std::max(event.severity, Health::kWarning);
    told.found.add(event.origin, severity);
    if (own) {
      told.kept.push_back(&event);
      told.worst = std::max(told.worst, severity);
    }
  }
  for (const auto& [index, holder] : conditions.holders()) {
    const Event& event = conditions.events()[index];
    if (!event.dropped) {
      told.found.add(holder, std::max(event.severity, Health::kWarning));
    }
  }
  return told;
}

}  // namespace

HealthReading readEvents(const Graph& graph, const redfish::Topology& topology,
                         const redfish::Node& node,
                         const AlertOptions& options) {
  HealthReading reading;
  reading.serviceConditionsSuffice =
      !options.thorough && redfish::serviceConditionsSuffice(graph, node);
  const NodeScope scope(graph, topology, node);

  EventList conditions = conditionsOf(graph, scope, reading.wanted);
  MessageRegistries registries(graph);
  Told told = toldOf(conditions, scope, registries);
  const bool walked = !reading.serviceConditionsSuffice;
  if (walked) {
    WalkFailures walk =
        walkFailures(graph, node, {options.thorough, options.unexplained});
    reading.failure = std::move(walk.failure);
    reading.gap = std::move(walk.gap);
  }
  PartEvents parts =
      partEvents(graph, node, scope, walked, told.found, told.worst);
  reading.unexplained = std::move(parts.unexplained);
  for (const Event& event : parts.events) {
    told.kept.push_back(&event);
  }

  reading.events = inOrder(graph, told.kept);
  reading.wanted.insert(reading.wanted.end(), registries.wanted().begin(),
                        registries.wanted().end());
  for (const Event* event : told.kept) {
    if (isUnreadSensor(graph, event->origin)) {
      reading.wanted.push_back(event->origin);
    }
  }
  reading.wanted = eachOnce(std::move(reading.wanted));
  return reading;
}

Alert printed(const report::Event& event) {
  Alert alert{};
  alert.extra = event.origin;
  if (!event.time.empty()) {
    alert.extra += " " + event.time;
  }
  alert.messageId = event.messageId;
  alert.severity = event.severity == report::Health::kError ? 2 : 1;
  alert.category = categoryName(event.category);
  alert.message = event.message;
  return alert;
}

}  // namespace devhealth
