// The end of a login: whatever the service has granted is given back.
#include <algorithm>
#include <exception>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/log.h"
#include "suite/redfish/graph/uri.h"
#include "suite/redfish/session/session.h"

namespace redfish {
namespace {

// Whether an answer to the logout says that there is no such session any more.
bool isEnded(int status) {
  return (status >= 200 && status < 300) || status == 401 || status == 404 ||
         status == 410;
}

// Leaving is best effort: there is nobody left to tell but the log, if even
// that can be told.
void logFailure(const std::string& address,
                const std::exception& error) noexcept {
  try {
    BRIVEL_LOG(base::kLogError)
        << address << ": the logout failed (" << error.what()
        << "); the session may stay open until it times out";
  } catch (const std::exception&) {
    // No memory for it.
  }
}

}  // namespace

void Session::logout() noexcept {
  try {
    fetcher_.deferInterrupt(true);
    // A login that the service has never seen grants nothing.
    if (ticket_ && fetcher_.mayHaveArrived(*ticket_)) {
      const auto answer =
          fetcher_.wait(*ticket_, base::Clock::now() + kLogoutTimeout);
      if (answer) {
        logLostLogin(*answer);
        adopt(*answer);
      } else {
        BRIVEL_LOG(base::kLogError)
            << address_ << ": the login was never answered; if it made a "
            << "session, that stays open until it times out there";
      }
    }
    ticket_.reset();
    if (answer_) {
      logLostLogin(*answer_);
      adopt(*answer_);
    }
    answer_.reset();
    fetcher_.cancelAll();
    if (!granted_) {
      return;
    }
    granted_ = false;
    const auto end = base::Clock::now() + kLogoutTimeout;
    if (sessionTarget_.empty()) {
      sessionTarget_ = findSession(end);
    }
    if (sessionTarget_.empty()) {
      BRIVEL_LOG(base::kLogError)
          << address_ << ": the service did not say where its session is; it "
          << "stays open until it times out there";
      return;
    }
    http::Request request;
    request.method = http::Method::kDelete;
    request.target = sessionTarget_;
    authenticate(request);
    request.timeout = kLogoutTimeout;
    token_.clear();
    const auto answer = fetcher_.wait(fetcher_.send(std::move(request)), end);
    if (!answer || answer->failure) {
      BRIVEL_LOG(base::kLogError)
          << address_ << ": no answer to the logout; the session may stay open "
          << "until it times out";
      return;
    }
    if (!isEnded(answer->status)) {
      BRIVEL_LOG(base::kLogError)
          << address_ << ": the logout was answered with HTTP status "
          << answer->status << "; the session may stay open until it times out";
      return;
    }
    ++logouts_;
  } catch (const std::exception& error) {
    logFailure(address_, error);
  }
}

std::string Session::findSession(base::Clock::time_point until) {
  const auto sessions = read(loginTarget_, until);
  if (!sessions) {
    return {};
  }
  std::vector<Uri> members = linksAt(*sessions, "Members");
  // What a link to elsewhere names is not ours to delete.
  const std::string below = loginTarget_ + "/";
  members.erase(std::remove_if(members.begin(), members.end(),
                               [&below](const Uri& member) {
                                 return !base::startsWith(member.target(),
                                                          below);
                               }),
                members.end());
  if (members.size() == 1) {
    return members.front().target();
  }
  constexpr std::size_t kMaxSessions = 64;
  std::vector<std::string> ours;
  for (std::size_t i = 0; i < members.size() && i < kMaxSessions; ++i) {
    const auto session = read(members[i].target(), until);
    if (session && stringAt(*session, "UserName") == user_) {
      ours.push_back(members[i].target());
    }
  }
  return ours.size() == 1 ? ours.front() : std::string();
}

std::optional<json::object> Session::read(const std::string& target,
                                          base::Clock::time_point until) {
  http::Request request;
  request.target = target;
  authenticate(request);
  request.timeout = kLogoutTimeout;
  const auto answer = fetcher_.wait(fetcher_.send(std::move(request)), until);
  if (!answer || answer->failure || answer->status != 200) {
    return std::nullopt;
  }
  auto body = parseSmallObject(answer->body);
  return body ? std::optional(*std::move(body)) : std::nullopt;
}

void Session::authenticate(http::Request& request) const {
  if (!token_.empty()) {
    request.authToken = base::Secret(token_);
  } else {
    // A service that made a session and kept its token to itself.
    request.basicUser = user_;
    request.basicPassword = base::Secret(password_);
  }
}

}  // namespace redfish
