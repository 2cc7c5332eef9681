#include "tests/bmc/service/session_service.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <utility>

#include "tests/bmc/wire/error_body.h"

namespace bmc {
namespace {

namespace json = boost::json;

const json::string* textIn(const json::value& value, const char* name) {
  const json::object* object = value.if_object();
  const json::value* member =
      object == nullptr ? nullptr : object->if_contains(name);
  return member == nullptr ? nullptr : member->if_string();
}

}  // namespace

SessionService::SessionService(std::string collection, Account account,
                               std::size_t limit, SessionLife life,
                               Counters& counters)
    : collection_(std::move(collection)),
      account_(std::move(account)),
      sessions_(limit),
      life_(life),
      counters_(counters) {}

bool SessionService::owns(std::string_view path) const {
  return path == collection_ || !idOf(path).empty();
}

Authentication SessionService::authenticate(const Headers& headers) {
  const Session* session = sessions_.use(headerOf(headers, "X-Auth-Token"));
  const bool expired = session != nullptr && life_.expireAfter > 0 &&
                       session->uses > life_.expireAfter &&
                       counters_.sessionsExpired < life_.times;
  if (expired) {
    sessions_.close(session->id);
    ++counters_.sessionsExpired;
    counters_.sessionsOpen = sessions_.all().size();
  }
  return bmc::authenticate(headers, account_, sessions_);
}

Reply SessionService::login(const std::string& body) {
  json::error_code error;
  const json::value value = json::parse(body, error);
  if (error) {
    return errorReply(400, "MalformedJSON", "The request body is not JSON.");
  }
  const json::string* user = textIn(value, "UserName");
  const json::string* password = textIn(value, "Password");
  if (user == nullptr || password == nullptr) {
    return errorReply(400, "PropertyMissing",
                      "UserName and Password are required texts.");
  }
  if (!matches(account_, *user, *password)) {
    ++counters_.loginsRefused;
    return errorReply(401, "ResourceAtUriUnauthorized",
                      "The user name or the password is wrong.");
  }
  const Session* session = sessions_.open(account_.user);
  if (session == nullptr) {
    ++counters_.sessionsRefused;
    return errorReply(503, "SessionLimitExceeded",
                      "The limit of simultaneous sessions is reached.");
  }
  ++counters_.sessionsCreated;
  counters_.sessionsOpen = sessions_.all().size();
  Reply reply = jsonReply(201, describe(*session));
  setHeader(reply.headers, "Location", collection_ + "/" + session->id);
  setHeader(reply.headers, "X-Auth-Token", session->token);
  return reply;
}

Reply SessionService::logout(std::string_view path) {
  if (!sessions_.close(idOf(path))) {
    return errorReply(404, "ResourceMissingAtURI", "There is no such session.");
  }
  ++counters_.sessionsDeleted;
  counters_.sessionsOpen = sessions_.all().size();
  Reply reply;
  reply.status = 204;
  reply.headers = {{"OData-Version", "4.0"}, {"Cache-Control", "no-cache"}};
  return reply;
}

Reply SessionService::show(std::string_view path) const {
  if (path != collection_) {
    const Session* session = sessions_.find(idOf(path));
    return session != nullptr ? jsonReply(200, describe(*session))
                              : errorReply(404, "ResourceMissingAtURI",
                                           "There is no such session.");
  }
  json::array members;
  for (const auto& entry : sessions_.all()) {
    members.push_back(
        json::object{{"@odata.id", collection_ + "/" + entry.first}});
  }
  const json::object body{
      {"@odata.id", collection_},
      {"@odata.type", "#SessionCollection.SessionCollection"},
      {"Name", "Session Collection"},
      {"Members@odata.count", members.size()},
      {"Members", members}};
  return jsonReply(200, json::serialize(body));
}

std::string SessionService::idOf(std::string_view path) const {
  const std::size_t length = collection_.size();
  if (path.size() <= length + 1 || path.substr(0, length) != collection_ ||
      path[length] != '/') {
    return {};
  }
  return std::string(path.substr(length + 1));
}

std::string SessionService::describe(const Session& session) const {
  return json::serialize(
      json::object{{"@odata.id", collection_ + "/" + session.id},
                   {"@odata.type", "#Session.v1_5_0.Session"},
                   {"Id", session.id},
                   {"Name", "User Session"},
                   {"UserName", session.user}});
}

}  // namespace bmc
