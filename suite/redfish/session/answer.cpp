#include "suite/redfish/session/answer.h"

#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/text.h"
#include "suite/redfish/graph/json.h"

namespace redfish {
namespace {

constexpr std::size_t kMaxMessage = 200;

// Calls `use` with each message object of an error body.
template <typename Use>
void forEachMessage(const json::object& body, Use use) {
  // A session may be granted with messages beside its properties, so they are
  // looked for at the top as well.
  for (const char* path :
       {"error/@Message.ExtendedInfo", "@Message.ExtendedInfo"}) {
    if (const json::array* messages = arrayAt(body, path)) {
      for (const json::value& message : *messages) {
        if (const json::object* object = message.if_object()) {
          use(*object);
        }
      }
    }
  }
}

// What a person can do about an answer of this kind.
const char* remedyFor(base::FailureKind kind) {
  switch (kind) {
    case base::FailureKind::kForbidden:
      return "give the account the privilege to read it";
    case base::FailureKind::kBusy:
      return "try again later, or with --max-connections 1";
    case base::FailureKind::kServerError:
      return "try again later; if it stays so, restart the controller";
    case base::FailureKind::kBadContent:
      return "check the controller's firmware";
    default:
      return "";
  }
}

base::FailureKind kindOf(int status) {
  if (status == 401) {
    return base::FailureKind::kAuthentication;
  }
  if (status == 403) {
    return base::FailureKind::kForbidden;
  }
  if (status == 429 || status == 503) {
    return base::FailureKind::kBusy;
  }
  if (status >= 500) {
    return base::FailureKind::kServerError;
  }
  if (status >= 300 && status < 400) {
    return base::FailureKind::kRefusedLink;
  }
  return base::FailureKind::kBadContent;
}

// The failure that an HTTP status other than success stands for, without
// address and URI.
base::Failure statusFailure(const http::Answer& answer) {
  base::Failure failure;
  failure.kind = kindOf(answer.status);
  failure.cause = "HTTP status " + std::to_string(answer.status);
  const std::string message = firstMessage(answer.body);
  if (!message.empty()) {
    failure.cause += " (" + message + ")";
  }
  failure.remedy = remedyFor(failure.kind);
  if (answer.status == 403) {
    const auto body = parseSmallObject(answer.body);
    if (body && hasMessageKey(*body, "PasswordChangeRequired")) {
      failure.kind = base::FailureKind::kPasswordChange;
      failure.remedy = "change the password of this account first";
    }
  }
  return failure;
}

}  // namespace

Resource resourceFrom(http::Answer answer, Uri uri, const std::string& address,
                      ReadingBudget& budget) {
  Resource resource;
  resource.uri = std::move(uri);
  resource.state = ResourceState::kUnreadable;
  if (answer.failure) {
    resource.failure = std::move(answer.failure);
    resource.failure->uri = resource.uri.target();
    return resource;
  }
  if (answer.status == 404 || answer.status == 410) {
    resource.state = ResourceState::kAbsent;
    return resource;
  }

  if (answer.status < 200 || answer.status > 299) {
    resource.failure = statusFailure(answer);
    resource.failure->address = address;
    resource.failure->uri = resource.uri.target();
    return resource;
  }

  auto body = parseObject(answer.body, &budget);
  if (!body) {
    resource.failure = body.error();
    resource.failure->address = address;
    resource.failure->uri = resource.uri.target();
    // A recording has no firmware.
    if (!base::startsWith(address, "file:")) {
      resource.failure->remedy = remedyFor(resource.failure->kind);
    }
    return resource;
  }
  if (body->contains("error") && !body->contains("@odata.id")) {
    resource.state = ResourceState::kAbsent;
    return resource;
  }
  resource.state = ResourceState::kRead;
  resource.body = std::move(*body);
  return resource;
}

bool hasMessageKey(const json::object& body, std::string_view key) {
  bool found = false;
  forEachMessage(body, [&](const json::object& message) {
    const std::string_view id = stringAt(message, "MessageId");
    const std::size_t dot = id.rfind('.');
    found =
        found || id.substr(dot == std::string_view::npos ? 0 : dot + 1) == key;
  });
  return found;
}

std::string firstMessage(std::string_view body) {
  const auto object = parseSmallObject(body);
  if (!object) {
    return {};
  }
  std::string first;
  forEachMessage(*object, [&](const json::object& message) {
    if (first.empty()) {
      first = base::excerpt(stringAt(message, "Message"), kMaxMessage);
    }
  });
  if (first.empty()) {
    first = base::excerpt(stringAt(*object, "error/message"), kMaxMessage);
  }
  return first;
}

}  // namespace redfish
