#include "suite/redfish/session/session.h"

#include <algorithm>
#include <boost/json/serializer.hpp>
#include <iterator>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/log.h"
#include "suite/http/basic_login.h"
#include "suite/http/network_fault.h"
#include "suite/platform/interrupt.h"
#include "suite/redfish/graph/uri.h"
#include "suite/redfish/session/answer.h"

namespace redfish {
namespace {

std::string targetAt(const json::object& object, std::string_view path) {
  const auto link = linkAt(object, path);
  return link ? link->target() : std::string();
}

// Messages with which services refuse a login by status 400.
constexpr const char* kRefusalKeys[] = {
    "ResourceAtUriUnauthorized", "AccountLocked",        "NoValidSession",
    "InsufficientPrivilege",     "AuthenticationFailed", "InvalidCredentials"};

std::string statusText(const http::Answer& answer) {
  return "HTTP status " + std::to_string(answer.status);
}

// Where the service keeps sessions, as its root says; empty when it does not.
std::string sessionsTarget(const json::object& root) {
  std::string target = targetAt(root, "Links/Sessions");
  // A root that came expanded carries the session service inside.
  if (target.empty()) {
    target = targetAt(root, "SessionService/Sessions");
  }
  return target;
}

// Path of a session from the text that names it: a link to below the sessions'
// URI, or, from services that leave the prefix out, the last segment of one.
// Empty for a link to elsewhere: what it names would be deleted at the end.
std::string sessionPath(const std::string& text, const std::string& sessions) {
  if (const auto uri = Uri::parse(text)) {
    return base::startsWith(uri->target(), sessions + "/") ? uri->target()
                                                           : std::string();
  }
  const std::size_t slash = text.find_last_of('/');
  const std::string id =
      slash == std::string::npos ? text : text.substr(slash + 1);
  if (id.empty()) {
    return {};
  }
  const auto uri = Uri::parse(sessions + "/" + id);
  return uri ? uri->target() : std::string();
}

// A text as JSON writes it, quotes included. Written into memory of our own,
// because it may be a password.
base::Secret quotedJson(std::string_view text) {
  constexpr std::size_t kLongestEscape = 6;  // \u001f
  std::string json(kLongestEscape * text.size() + 2, '\0');
  json::serializer serializer;
  serializer.reset(text);
  json.resize(serializer.read(json.data(), json.size()).size());
  return base::Secret(std::move(json));
}

// Whether a login reached the service, and what that made of it is not known.
bool mayHaveGranted(const http::Answer& answer) {
  return answer.lostBeforeAnswer ||
         (answer.failure &&
          (answer.failure->kind == base::FailureKind::kReadTimeout ||
           answer.failure->kind == base::FailureKind::kBadContent));
}

}  // namespace

Session::Session(Fetcher& fetcher, std::string address, std::string user,
                 base::Secret password)
    : fetcher_(fetcher),
      address_(std::move(address)),
      user_(std::move(user)),
      password_(std::move(password)) {
  fetcher_.nameInLog(
      [this](std::string target) { return scrub(std::move(target)); });
}

void Session::begin(std::chrono::milliseconds timeout) {
  if (wanted()) {
    sendLogin(timeout);
  }
}

bool Session::accept(FetchResult& fetched) {
  if (!ticket_ || fetched.ticket != *ticket_) {
    return false;
  }
  ticket_.reset();
  answer_ = std::move(fetched.answer);
  return true;
}

base::Failure Session::timeoutFailure() const {
  base::Failure failure =
      http::failureOf(ticket_ && !fetcher_.mayHaveArrived(*ticket_)
                          ? http::NetworkFault::kConnectTimeout
                          : http::NetworkFault::kAnswerTimeout,
                      "", {loginTimeout_, loginTimeout_});
  failure.address = address_;
  failure.uri = loginTarget_;
  return failure;
}

std::optional<base::Failure> Session::conclude(
    const json::object& root, std::chrono::milliseconds timeout,
    base::Clock::time_point until) {
  if (!wanted()) {
    return std::nullopt;
  }
  const std::string named = sessionsTarget(root);
  Outcome outcome = answer_ ? judge(*answer_) : Outcome::kWrongPlace;
  const bool refused = answer_ && answer_->status == 401;
  answer_.reset();
  if (outcome == Outcome::kWrongPlace && !named.empty() &&
      named != loginTarget_) {
    loginTarget_ = named;
    outcome = login(timeout, until);
  }
  // A service that names no sessions knows Basic alone and says 401 to all
  // else; that is no word about the password.
  if (outcome == Outcome::kFailed && refused && named.empty()) {
    outcome = Outcome::kImpossible;
  }
  if (outcome == Outcome::kSession) {
    return std::nullopt;
  }
  if (outcome == Outcome::kFailed) {
    return failure_;
  }
  useBasic();
  return std::nullopt;
}

std::optional<base::Failure> Session::renew(std::chrono::milliseconds timeout,
                                            base::Clock::time_point until) {
  token_.clear();
  sessionTarget_.clear();
  granted_ = false;
  if (login(timeout, until) == Outcome::kSession) {
    return std::nullopt;
  }
  if (failure_) {
    return failure_;
  }
  return fail(base::FailureKind::kAuthentication,
              "the session ended and no new one was granted", "");
}

std::string Session::scrub(std::string text) const {
  text = base::withoutSecret(std::move(text), password_.text());
  text = base::withoutSecret(std::move(text), token_.text());
  return wanted()
             ? base::withoutSecret(std::move(text),
                                   http::basicLogin(user_, password_).text())
             : text;
}

base::Failure Session::scrub(base::Failure failure) const {
  for (std::string* text : {&failure.uri, &failure.cause, &failure.remedy}) {
    *text = scrub(std::move(*text));
  }
  return failure;
}

void Session::sendLogin(std::chrono::milliseconds timeout) {
  loginTimeout_ = timeout;
  loginEnd_ = base::Clock::now() + timeout;
  ticket_ = fetcher_.send(loginRequest());
}

http::Request Session::loginRequest() const {
  http::Request request;
  request.method = http::Method::kPost;
  request.target = loginTarget_;
  request.body = base::Secret({R"({"UserName":)", quotedJson(user_).text(),
                               R"(,"Password":)",
                               quotedJson(password_.text()).text(), "}"});
  // Longer than we wait for it: what it grants late is taken back by `logout`.
  request.timeout = loginTimeout_ + kLogoutTimeout;
  return request;
}

Session::Outcome Session::login(std::chrono::milliseconds timeout,
                                base::Clock::time_point until) {
  sendLogin(timeout);
  const auto answer = fetcher_.wait(*ticket_, std::min(until, loginEnd_));
  if (!answer) {
    // It stays under way: what it may yet grant is taken back by `logout`.
    failure_ = platform::interrupted() ? fail(base::FailureKind::kInterrupted,
                                              "interrupted by the user", "")
               : loginEnd_ <= until
                   ? timeoutFailure()
                   : fail(base::FailureKind::kDeadline,
                          "no answer to the login in time", "");
    return Outcome::kFailed;
  }
  ticket_.reset();
  return judge(*answer);
}

Session::Outcome Session::judge(const http::Answer& answer) {
  failure_.reset();
  logLostLogin(answer);
  if (!answer.failure && answer.status >= 200 && answer.status < 300) {
    return adopt(answer) ? Outcome::kSession : Outcome::kImpossible;
  }
  switch (answer.status) {
    case 404:
    case 405:
    case 301:
    case 302:
    case 307:
    case 308:
      return Outcome::kWrongPlace;
    case 501:
      return Outcome::kImpossible;
    case 429:
    case 503:
      tableFull_ = true;
      BRIVEL_LOG(base::kLogError)
          << address_ << ": no session granted (" << statusText(answer) << ")"
          << messageIn(answer) << "; its session table may be full";
      return Outcome::kImpossible;
    default:
      failure_ = loginFailure(answer);
      return failure_ ? Outcome::kFailed : Outcome::kImpossible;
  }
}

std::optional<base::Failure> Session::loginFailure(
    const http::Answer& answer) const {
  using Kind = base::FailureKind;
  if (answer.failure) {
    base::Failure failure = *answer.failure;
    failure.uri = loginTarget_;
    return failure;
  }
  const auto body = parseSmallObject(answer.body);
  const auto holds = [&body](const char* key) {
    return body && hasMessageKey(*body, key);
  };
  const std::string message = messageIn(answer);
  switch (answer.status) {
    case 401:
      return fail(Kind::kAuthentication,
                  "user name or password refused" + message,
                  "check the user name and the password; it was tried once "
                  "only, because controllers lock accounts");
    case 403:
      if (holds("PasswordChangeRequired")) {
        return fail(Kind::kPasswordChange,
                    "the password of this account must be changed first",
                    "change it on the controller, then run again");
      }
      return fail(Kind::kAuthentication, "the account may not log in" + message,
                  "it may be disabled, locked, or lack the Login privilege");
    case 400:
      if (std::any_of(std::begin(kRefusalKeys), std::end(kRefusalKeys),
                      holds)) {
        return fail(Kind::kAuthentication,
                    "user name or password refused" + message,
                    "check the user name and the password");
      }
      return std::nullopt;
    default:
      return fail(answer.status >= 500 ? Kind::kServerError : Kind::kBadContent,
                  "the login was answered with " + statusText(answer) + message,
                  "try again later; if it stays so, restart the controller");
  }
}

std::string Session::messageIn(const http::Answer& answer) const {
  const std::string message = scrub(firstMessage(answer.body));
  return message.empty() ? "" : " (" + message + ")";
}

void Session::logLostLogin(const http::Answer& answer) const {
  if (mayHaveGranted(answer)) {
    BRIVEL_LOG(base::kLogError)
        << address_ << ": the answer to the login was lost; if it made a "
        << "session, that stays open until it times out there";
  }
}

bool Session::adopt(const http::Answer& answer) {
  if (answer.failure || answer.status < 200 || answer.status > 299) {
    return false;
  }
  sessionTarget_.clear();
  if (!answer.location.empty()) {
    sessionTarget_ = sessionPath(answer.location, loginTarget_);
  }
  const auto body = parseSmallObject(answer.body);
  for (const char* name : {"@odata.id", "Id"}) {
    if (!sessionTarget_.empty() || !body) {
      break;
    }
    const std::string text(stringAt(*body, name));
    if (!text.empty()) {
      sessionTarget_ = sessionPath(text, loginTarget_);
    }
  }
  granted_ = !answer.authToken.empty() || !sessionTarget_.empty();
  if (granted_) {
    ++logins_;
  }
  if (answer.authToken.empty()) {
    return false;
  }
  token_ = base::Secret(answer.authToken);
  fetcher_.authorize({base::Secret(token_), "", {}, false});
  return true;
}

base::Failure Session::unauthorizedFailure() const {
  if (!wanted()) {
    return fail(base::FailureKind::kNoCredentials,
                "the service asks for a login", "name a user and a password");
  }
  if (basic_ && tableFull_) {
    return fail(base::FailureKind::kBusy,
                "no session is left at the service, and HTTP Basic is refused",
                "end sessions that are no longer in use, or raise the "
                "service's session limit");
  }
  if (basic_) {
    return fail(base::FailureKind::kAuthentication,
                "user name or password refused",
                "check the user name and the password");
  }
  return fail(base::FailureKind::kAuthentication,
              "the session ended again at once after a new login",
              "check the session timeout of the service");
}

void Session::useBasic() {
  basic_ = true;
  BRIVEL_LOG(base::kLogInformation)
      << address_ << ": no session to be had, using HTTP Basic";
  fetcher_.authorize({{}, user_, base::Secret(password_), true});
}

base::Failure Session::fail(base::FailureKind kind, std::string cause,
                            std::string remedy) const {
  base::Failure failure;
  failure.kind = kind;
  failure.address = address_;
  failure.uri = loginTarget_;
  failure.cause = std::move(cause);
  failure.remedy = std::move(remedy);
  return failure;
}

}  // namespace redfish
