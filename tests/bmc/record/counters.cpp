#include "tests/bmc/record/counters.h"

#include <array>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value_to.hpp>
#include <utility>

namespace bmc {
namespace {

namespace json = boost::json;

struct Field {
  const char* name;
  std::uint64_t Counters::*member;
};

// clang-format off
constexpr std::array kFields{
    Field{"requests",               &Counters::requests},
    Field{"openRequests",           &Counters::openRequests},
    Field{"maxOpenRequests",        &Counters::maxOpenRequests},
    Field{"connections",            &Counters::connections},
    Field{"openConnections",        &Counters::openConnections},
    Field{"maxOpenConnections",     &Counters::maxOpenConnections},
    Field{"tlsHandshakes",          &Counters::tlsHandshakes},
    Field{"tlsFullHandshakes",      &Counters::tlsFullHandshakes},
    Field{"tlsResumptions",         &Counters::tlsResumptions},
    Field{"tlsFailures",            &Counters::tlsFailures},
    Field{"bytesSent",              &Counters::bytesSent},
    Field{"sessionsCreated",        &Counters::sessionsCreated},
    Field{"sessionsDeleted",        &Counters::sessionsDeleted},
    Field{"sessionsOpen",           &Counters::sessionsOpen},
    Field{"sessionsExpired",        &Counters::sessionsExpired},
    Field{"sessionsRefused",        &Counters::sessionsRefused},
    Field{"loginsRefused",          &Counters::loginsRefused},
    Field{"authenticatedByToken",   &Counters::authenticatedByToken},
    Field{"authenticatedByBasic",   &Counters::authenticatedByBasic},
    Field{"authenticationsRefused", &Counters::authenticationsRefused},
    Field{"datagrams",              &Counters::datagrams},
};
// clang-format on

using CountMap = std::map<std::string, std::uint64_t>;

json::object toObject(const CountMap& counts) {
  json::object object;
  for (const auto& [key, count] : counts) {
    object[key] = count;
  }
  return object;
}

CountMap toMap(const json::object& holder, const char* name) {
  CountMap counts;
  const json::value* value = holder.if_contains(name);
  if (value == nullptr || !value->is_object()) {
    return counts;
  }
  for (const auto& entry : value->get_object()) {
    counts[entry.key()] = entry.value().to_number<std::uint64_t>();
  }
  return counts;
}

}  // namespace

std::string toJson(const Counters& counters) {
  json::object object;
  for (const Field& field : kFields) {
    object[field.name] = counters.*field.member;
  }
  object["requestsByMethod"] = toObject(counters.requestsByMethod);
  object["answersByStatus"] = toObject(counters.answersByStatus);
  return json::serialize(object);
}

Counters countersFromJson(const std::string& text) {
  Counters counters;
  json::error_code error;
  const json::value value = json::parse(text, error);
  if (error || !value.is_object()) {
    return counters;
  }
  const json::object& object = value.get_object();
  for (const Field& field : kFields) {
    const json::value* number = object.if_contains(field.name);
    if (number != nullptr) {
      counters.*field.member = number->to_number<std::uint64_t>();
    }
  }
  counters.requestsByMethod = toMap(object, "requestsByMethod");
  counters.answersByStatus = toMap(object, "answersByStatus");
  return counters;
}

}  // namespace bmc
