#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "suite/devhealth/health/message_id.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {

/// Where an event was found. If several sources tell the same, the first
/// counts.
enum class EventSource {
  kServiceConditions = 1,  ///< The service's list of active conditions.
  kResource = 2,           ///< The conditions of a resource.
  kHealth = 3              ///< The health of a part without a condition.
};

/// One active event, before it becomes an alert.
struct Event {
  redfish::Uri origin;  ///< Of the part, or of who holds the condition.
  EventSource source = EventSource::kResource;
  std::string messageId;  ///< As served; may be empty.
  MessageId id;           ///< Its parts.
  std::vector<std::string> arguments;
  std::string message;    ///< May still hold "%1"; may be empty.
  std::string timestamp;  ///< As served; may be empty.
  /// Warning or critical; unknown where the service does not say.
  redfish::Health severity = redfish::Health::kUnknown;
  bool dropped = false;  ///< Another event tells it better.
};

/// The conditions of a service, each once: two are the same when they name the
/// same origin and message with the same arguments, whatever the version of
/// the message's registry; without a message identifier, the same origin and
/// text.
class EventList {
 public:
  /// Adds a condition object (Resource schema) that a resource holds. One of
  /// severity "OK" is no event.
  void addCondition(const redfish::json::object& condition,
                    const redfish::Uri& holder, EventSource source);

  /// Adds all conditions in an array.
  void addConditions(const redfish::json::array& conditions,
                     const redfish::Uri& holder, EventSource source);

  std::vector<Event>& events() { return events_; }
  const std::vector<Event>& events() const { return events_; }

  /// For each condition the index of its event, and the resource that held it.
  const std::vector<std::pair<std::size_t, redfish::Uri>>& holders() const {
    return holders_;
  }

 private:
  std::vector<Event> events_;
  std::unordered_map<std::string, std::size_t> byKey_;
  std::vector<std::pair<std::size_t, redfish::Uri>> holders_;
};

}  // namespace devhealth
