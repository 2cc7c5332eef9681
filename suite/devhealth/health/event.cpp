#include "suite/devhealth/health/event.h"

#include <algorithm>
#include <boost/json/array.hpp>

#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Health;
using redfish::Uri;

// Arguments in order. A placeholder is an argument like any other.
std::vector<std::string> argumentsOf(const json::object& condition) {
  std::vector<std::string> arguments;
  const json::array* values = redfish::arrayAt(condition, "MessageArgs");
  if (values == nullptr) {
    return arguments;
  }
  for (const json::value& value : *values) {
    const json::string* text = value.if_string();
    arguments.push_back(text == nullptr
                            ? textOf(value)
                            : plainText({text->data(), text->size()}));
  }
  return arguments;
}

std::string keyOf(const Event& event) {
  std::string key = event.origin.identity();
  key += '\n';
  if (event.messageId.empty()) {
    key += '\n' + event.message;
    return key;
  }
  key += event.id.prefix + '.' + event.id.key;
  for (const std::string& argument : event.arguments) {
    key += '\n' + argument;
  }
  return key;
}

}  // namespace

void EventList::addCondition(const json::object& condition, const Uri& holder,
                             EventSource source) {
  Event event;
  event.severity =
      redfish::healthFromText(redfish::stringAt(condition, "Severity"));
  if (event.severity == Health::kOk) {
    return;
  }
  event.origin =
      redfish::linkAt(condition, "OriginOfCondition").value_or(holder);
  event.source = source;
  event.messageId = textAt(condition, "MessageId");
  event.id = parseMessageId(event.messageId);
  event.arguments = argumentsOf(condition);
  event.message = plainTextAt(condition, "Message");
  event.timestamp = textAt(condition, "Timestamp");

  const auto [entry, isNew] = byKey_.try_emplace(keyOf(event), events_.size());
  holders_.emplace_back(entry->second, holder);
  if (isNew) {
    events_.push_back(std::move(event));
    return;
  }
  Event& first = events_[entry->second];
  first.severity = std::max(first.severity, event.severity);
  if (first.message.empty()) {
    first.message = std::move(event.message);
  }
  if (first.timestamp.empty()) {
    first.timestamp = std::move(event.timestamp);
  }
}

void EventList::addConditions(const json::array& conditions, const Uri& holder,
                              EventSource source) {
  for (const json::value& value : conditions) {
    if (const json::object* condition = value.if_object()) {
      addCondition(*condition, holder, source);
    }
  }
}

}  // namespace devhealth
