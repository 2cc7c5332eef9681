#include "suite/devhealth/health/conditions.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "suite/devhealth/health/needs_attention.h"
#include "suite/redfish/graph/service_conditions.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Resource;
using redfish::Uri;

constexpr std::string_view kConditions = "Status/Conditions";

void addListed(const Graph& graph, EventList& list) {
  const json::object* document = redfish::serviceConditions(graph);
  const json::array* conditions =
      document == nullptr ? nullptr : redfish::arrayAt(*document, "Conditions");
  if (conditions == nullptr) {
    return;
  }
  const Resource& root = *redfish::serviceRoot(graph);
  const auto link = redfish::linkAt(root.body, "ServiceConditions");
  list.addConditions(*conditions, *link, EventSource::kServiceConditions);
}

void addHeld(const Graph& graph, EventList& list) {
  for (const auto& [key, resource] : graph.resources()) {
    forEachNeedingAttention(resource, [&](const Uri& uri,
                                          const json::object& part) {
      if (const json::array* conditions = redfish::arrayAt(part, kConditions)) {
        list.addConditions(*conditions, uri, EventSource::kResource);
      }
    });
  }
}

// Follows conditions that only point elsewhere.
class Pointers {
 public:
  explicit Pointers(const Graph& graph) : graph_(graph) {}

  // Whether a place holds a condition that is more than a pointer, or a
  // pointer that leads to one. Each place is looked at once, so that pointers
  // in a circle end.
  bool leadToEvent(const Uri& place, int depth = 0) {
    constexpr int kMaxDepth = 8;
    if (depth > kMaxDepth) {
      return false;
    }
    const auto [entry, isNew] = known_.try_emplace(place.identity(), false);
    if (!isNew) {
      return entry->second;
    }
    const json::object* part = graph_.resolve(place).object;
    const json::array* conditions =
        part == nullptr ? nullptr : redfish::arrayAt(*part, kConditions);
    if (conditions == nullptr) {
      return false;
    }
    EventList held;
    held.addConditions(*conditions, place, EventSource::kResource);
    const auto& events = held.events();
    bool& leads = entry->second;
    leads = std::any_of(events.begin(), events.end(), [](const Event& event) {
      return !isPointer(event.id);
    });
    for (const Event& event : events) {
      if (leads) {
        break;
      }
      leads = leadToEvent(event.origin, depth + 1);
    }
    return leads;
  }

 private:
  const Graph& graph_;
  std::unordered_map<std::string, bool> known_;
};

// Drops the pointers that lead to events, and takes those in.
void followPointers(const Graph& graph, const NodeScope& scope, EventList& list,
                    std::vector<Uri>& wanted) {
  Pointers pointers(graph);
  std::unordered_set<std::string> followed;
  // Events that are added on the way are looked at in their turn.
  for (std::size_t index = 0; index < list.events().size(); ++index) {
    Event& event = list.events()[index];
    if (!isPointer(event.id)) {
      continue;
    }
    const Uri origin = event.origin;
    if (graph.find(origin.document()) == nullptr) {
      if (scope.holds(origin.document())) {
        wanted.push_back(origin);
      }
      continue;
    }
    if (!pointers.leadToEvent(origin)) {
      continue;
    }
    event.dropped = true;
    if (!followed.insert(origin.identity()).second) {
      continue;
    }
    const json::object* part = graph.resolve(origin).object;
    list.addConditions(*redfish::arrayAt(*part, kConditions), origin,
                       EventSource::kResource);
  }
}

}  // namespace

EventList conditionsOf(const Graph& graph, const NodeScope& scope,
                       std::vector<Uri>& wanted) {
  EventList list;
  addListed(graph, list);
  addHeld(graph, list);
  followPointers(graph, scope, list, wanted);
  return list;
}

}  // namespace devhealth
