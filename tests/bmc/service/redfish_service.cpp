#include "tests/bmc/service/redfish_service.h"

#include <boost/json/serialize.hpp>
#include <charconv>
#include <optional>
#include <utility>

#include "tests/bmc/service/expand.h"
#include "tests/bmc/service/paging.h"
#include "tests/bmc/wire/error_body.h"

namespace bmc {
namespace {

namespace json = boost::json;

constexpr const char* kRootPath = "/redfish/v1";
constexpr const char* kStandardSessions = "/redfish/v1/SessionService/Sessions";

std::string sessionsPath(const Tree& tree) {
  const json::object* root = tree.object(kRootPath);
  if (root == nullptr) {
    return kStandardSessions;
  }
  const json::value holder(*root);
  json::error_code error;
  const json::value* link =
      holder.find_pointer("/Links/Sessions/@odata.id", error);
  if (link == nullptr || !link->is_string()) {
    return kStandardSessions;
  }
  const json::string& text = link->get_string();
  const auto target = parseTarget({text.data(), text.size()});
  return target ? target->path : kStandardSessions;
}

void advertiseExpand(Tree& tree, int maxLevels) {
  const json::object* root = tree.object(kRootPath);
  if (root == nullptr) {
    return;
  }
  json::object changed = *root;
  json::value& features = changed["ProtocolFeaturesSupported"];
  if (!features.is_object()) {
    features = json::object();
  }
  features.get_object()["ExpandQuery"] = {{"ExpandAll", true},
                                          {"Levels", true},
                                          {"Links", true},
                                          {"MaxLevels", maxLevels},
                                          {"NoLinks", true}};
  tree.replace(kRootPath, std::move(changed));
}

// The resources that DSP0266 opens to everyone.
bool isPublic(const std::string& path) {
  return path == "/redfish" || path == kRootPath ||
         path == "/redfish/v1/odata" || path == "/redfish/v1/$metadata";
}

bool isRead(const std::string& method) {
  return method == "GET" || method == "HEAD";
}

Reply methodNotAllowed(const char* allowed) {
  Reply reply = errorReply(405, "OperationNotAllowed",
                           "The resource does not support this method.");
  setHeader(reply.headers, "Allow", allowed);
  return reply;
}

Reply unauthorized() {
  Reply reply = errorReply(401, "ResourceAtUriUnauthorized",
                           "A valid session or valid credentials are needed.");
  setHeader(reply.headers, "WWW-Authenticate", "Basic realm=\"Redfish\"");
  return reply;
}

Reply badQuery(int status, const std::string& name) {
  return errorReply(status, "QueryParameterValueError",
                    "The query parameter " + name + " is not supported so.");
}

std::size_t numberOf(const std::optional<std::string>& text) {
  std::size_t number = 0;
  if (text) {
    static_cast<void>(  // What is no number counts as 0.
        std::from_chars(text->data(), text->data() + text->size(), number));
  }
  return number;
}

}  // namespace

RedfishService::RedfishService(Tree tree, ServiceSettings settings,
                               Counters& counters)
    : tree_(std::move(tree)),
      settings_(std::move(settings)),
      counters_(counters),
      sessions_(sessionsPath(tree_), settings_.account, settings_.maxSessions,
                settings_.sessionLife, counters) {
  if (settings_.maxExpandLevels > 0) {
    advertiseExpand(tree_, settings_.maxExpandLevels);
  }
}

Reply RedfishService::answer(const Request& request) {
  const auto target = parseTarget(request.target);
  if (!target) {
    return errorReply(400, "InvalidURI", "The target is no valid URI.");
  }
  const Authentication authentication = sessions_.authenticate(request.headers);
  Reply reply = route(request, *target, authentication);
  reply.authentication = authentication;
  if (authentication == Authentication::kToken) {
    ++counters_.authenticatedByToken;
  } else if (authentication == Authentication::kBasic) {
    ++counters_.authenticatedByBasic;
  }
  return reply;
}

Reply RedfishService::route(const Request& request, const Target& target,
                            Authentication authentication) {
  const std::string& collection = sessions_.collection();
  const bool login =
      request.method == "POST" &&
      (target.path == collection || target.path == collection + "/Members");
  if (login) {
    return sessions_.login(request.body);
  }

  const bool known = authentication == Authentication::kToken ||
                     authentication == Authentication::kBasic;
  if (!known && !settings_.open && !isPublic(target.path)) {
    if (authentication == Authentication::kRefused) {
      ++counters_.authenticationsRefused;
    }
    return unauthorized();
  }
  if (sessions_.owns(target.path)) {
    if (request.method == "DELETE") {
      return sessions_.logout(target.path);
    }
    if (isRead(request.method)) {
      return sessions_.show(target.path);
    }
    return methodNotAllowed("GET, HEAD, POST, DELETE");
  }
  if (!isRead(request.method)) {
    return tree_.find(target.path) == nullptr
               ? errorReply(404, "ResourceMissingAtURI",
                            "There is no such resource.")
               : methodNotAllowed("GET, HEAD");
  }
  return read(target);
}

Reply RedfishService::read(const Target& target) const {
  const StoredResource* stored = tree_.find(target.path);
  if (stored == nullptr) {
    return errorReply(404, "ResourceMissingAtURI",
                      "There is no such resource.");
  }
  for (const auto& parameter : target.query) {
    const std::string& name = parameter.first;
    const bool supported =
        (name == "$expand" && settings_.maxExpandLevels > 0) ||
        (name == "$skip" && settings_.pageSize > 0);
    // Those with a dollar are refused, others ignored (DSP0266).
    if (name.front() == '$' && !supported) {
      return badQuery(501, name);
    }
  }
  const bool changes = settings_.pageSize > 0 || target.parameter("$expand");
  const json::object* object = changes ? tree_.object(target.path) : nullptr;
  if (object != nullptr) {
    return readObject(target, *object);
  }

  Reply reply = jsonReply(200, {});
  setHeader(reply.headers, "Content-Type", stored->contentType);
  reply.body = std::make_unique<TextBody>(stored->text);
  return reply;
}

Reply RedfishService::readObject(const Target& target,
                                 json::object object) const {
  std::string again = target.path;
  std::optional<ExpandQuery> query;
  if (const auto value = target.parameter("$expand")) {
    query = parseExpand(*value);
    if (!query || query->levels > settings_.maxExpandLevels) {
      return badQuery(400, "$expand");
    }
    again += "?$expand=" + *value;
  }
  paginate(object, again,
           {numberOf(target.parameter("$skip")), settings_.pageSize});
  if (query) {
    expand(object, target.path, tree_, *query);
  }
  return jsonReply(200, json::serialize(object));
}

}  // namespace bmc
