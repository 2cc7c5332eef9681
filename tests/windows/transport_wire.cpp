#include "tests/windows/transport_wire.h"

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <utility>

namespace wire {

namespace json = boost::json;
using base::Failure;
using base::FailureKind;
using http::Answer;
using http::Method;
using http::NetworkTransportOptions;
using http::Request;
using http::TransportStats;

namespace {

std::string textAt(const json::object& object, const char* name) {
  const json::string& text = object.at(name).as_string();
  return std::string(text.data(), text.size());
}

template <typename Number>
Number numberAt(const json::object& object, const char* name) {
  return object.at(name).to_number<Number>();
}

bool flagAt(const json::object& object, const char* name) {
  return object.at(name).as_bool();
}

std::chrono::milliseconds timeAt(const json::object& object, const char* name) {
  return std::chrono::milliseconds(numberAt<std::int64_t>(object, name));
}

}  // namespace

json::object encode(const NetworkTransportOptions& options) {
  return {{"host", options.origin.host},
          {"port", options.origin.port},
          {"plainHttp", options.origin.plainHttp},
          {"connectTimeout", options.connectTimeout.count()},
          {"maxConnections", options.maxConnections},
          {"caFile", options.caFile},
          {"pin", options.pin},
          {"insecure", options.insecure}};
}

NetworkTransportOptions optionsOf(const json::object& object) {
  NetworkTransportOptions options;
  options.origin = {textAt(object, "host"),
                    numberAt<std::uint16_t>(object, "port"),
                    flagAt(object, "plainHttp")};
  options.connectTimeout = timeAt(object, "connectTimeout");
  options.maxConnections = numberAt<int>(object, "maxConnections");
  options.caFile = textAt(object, "caFile");
  options.pin = textAt(object, "pin");
  options.insecure = flagAt(object, "insecure");
  return options;
}

json::object encode(const Request& request) {
  return {{"method", static_cast<int>(request.method)},
          {"target", request.target},
          {"body", request.body.text()},
          {"authToken", request.authToken.text()},
          {"basicUser", request.basicUser},
          {"basicPassword", request.basicPassword.text()},
          {"timeout", request.timeout.count()},
          {"freshConnection", request.freshConnection}};
}

Request requestOf(const json::object& object) {
  Request request;
  request.method = static_cast<Method>(numberAt<int>(object, "method"));
  request.target = textAt(object, "target");
  request.body = base::Secret(textAt(object, "body"));
  request.authToken = base::Secret(textAt(object, "authToken"));
  request.basicUser = textAt(object, "basicUser");
  request.basicPassword = base::Secret(textAt(object, "basicPassword"));
  request.timeout = timeAt(object, "timeout");
  request.freshConnection = flagAt(object, "freshConnection");
  return request;
}

json::object encode(const Answer& answer) {
  json::object object{{"id", answer.id},
                      {"reusedConnection", answer.reusedConnection},
                      {"lostBeforeAnswer", answer.lostBeforeAnswer},
                      {"badEncoding", answer.badEncoding},
                      {"status", answer.status},
                      {"location", answer.location},
                      {"authToken", answer.authToken.text()},
                      {"retryAfter", answer.retryAfter},
                      {"body", answer.body}};
  if (answer.failure) {
    object["failure"] =
        json::object{{"kind", static_cast<int>(answer.failure->kind)},
                     {"address", answer.failure->address},
                     {"uri", answer.failure->uri},
                     {"cause", answer.failure->cause},
                     {"remedy", answer.failure->remedy}};
  }
  return object;
}

Answer answerOf(const json::object& object) {
  Answer answer;
  answer.id = numberAt<std::uint64_t>(object, "id");
  answer.reusedConnection = flagAt(object, "reusedConnection");
  answer.lostBeforeAnswer = flagAt(object, "lostBeforeAnswer");
  answer.badEncoding = flagAt(object, "badEncoding");
  answer.status = numberAt<int>(object, "status");
  answer.location = textAt(object, "location");
  answer.authToken = base::Secret(textAt(object, "authToken"));
  answer.retryAfter = textAt(object, "retryAfter");
  answer.body = textAt(object, "body");
  if (const json::value* told = object.if_contains("failure")) {
    const json::object& failure = told->as_object();
    answer.failure =
        Failure{static_cast<FailureKind>(numberAt<int>(failure, "kind")),
                textAt(failure, "address"), textAt(failure, "uri"),
                textAt(failure, "cause"), textAt(failure, "remedy")};
  }
  return answer;
}

json::object encode(const TransportStats& stats) {
  return {{"requests", stats.requests},
          {"connections", stats.connections},
          {"bytes", stats.bytes}};
}

TransportStats statsOf(const json::object& object) {
  TransportStats stats;
  stats.requests = numberAt<std::uint64_t>(object, "requests");
  stats.connections = numberAt<std::uint64_t>(object, "connections");
  stats.bytes = numberAt<std::uint64_t>(object, "bytes");
  return stats;
}

json::object parseLine(const std::string& line) {
  json::parse_options options;
  options.allow_invalid_utf8 = true;
  return json::parse(line, {}, options).as_object();
}

}  // namespace wire
