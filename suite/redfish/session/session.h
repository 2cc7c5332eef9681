#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/base/failure.h"
#include "suite/base/secret.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/session/fetcher.h"

namespace redfish {

/// The login at one service (DSP0266, session management): a session, or HTTP
/// Basic if the service cannot make one. A password that was refused is never
/// tried again. `logout` deletes the session however the run ends; every
/// session that was granted is recorded here first.
class Session {
 public:
  /// An empty user means that no login is wanted. The password is kept for as
  /// long as the session lives.
  Session(Fetcher& fetcher, std::string address, std::string user,
          base::Secret password);

  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Sends the login to the standard URI without waiting, so that it is under
  /// way beside the first read. Nothing is sent without a user.
  void begin(std::chrono::milliseconds timeout);

  /// Takes the answer out of `fetched` if it is the one to `begin`, and returns
  /// whether it is.
  bool accept(FetchResult& fetched);

  /// When the time for the login under way ends. A session that is granted
  /// later is deleted by `logout`.
  base::Clock::time_point loginEnd() const { return loginEnd_; }

  /// The failure to report when no answer came by `loginEnd`.
  base::Failure timeoutFailure() const;

  /// Completes the login once the service root is known: if the standard URI
  /// was wrong, tries the one that the root names, or falls back to Basic.
  /// Requires that `accept` took the answer to `begin`. Returns nullopt on
  /// success.
  std::optional<base::Failure> conclude(const json::object& root,
                                        std::chrono::milliseconds timeout,
                                        base::Clock::time_point until);

  /// Logs in again after the service has ended the session. Returns nullopt on
  /// success.
  std::optional<base::Failure> renew(std::chrono::milliseconds timeout,
                                     base::Clock::time_point until);

  /// Whether a user is configured.
  bool wanted() const { return !user_.empty(); }
  /// Whether HTTP Basic is in use: the password is not verified by a login.
  bool basic() const { return basic_; }
  /// Whether the login can be renewed: Basic cannot.
  bool renewable() const { return wanted() && !basic_; }

  /// The failure to report when the service answered 401: after a login, or
  /// because no login was wanted.
  base::Failure unauthorizedFailure() const;

  /// A text for messages, without the password and the token in it, and
  /// without what HTTP Basic makes of user and password.
  std::string scrub(std::string text) const;
  /// The same for all texts of a failure.
  base::Failure scrub(base::Failure failure) const;

  /// Waits for a login under way, then deletes the session, within 5 seconds
  /// each. Never throws.
  void logout() noexcept;

  std::uint64_t logins() const { return logins_; }
  std::uint64_t logouts() const { return logouts_; }

 private:
  /// How long the end of a run waits for a login under way, and for the
  /// logout.
  static constexpr std::chrono::milliseconds kLogoutTimeout{5000};

  /// What the answer to a login means.
  enum class Outcome { kSession, kWrongPlace, kImpossible, kFailed };

  void sendLogin(std::chrono::milliseconds timeout);
  http::Request loginRequest() const;
  /// Sends the login and judges its answer; kFailed if none arrives in time.
  Outcome login(std::chrono::milliseconds timeout,
                base::Clock::time_point until);
  Outcome judge(const http::Answer& answer);
  /// Why an answer refuses the login; nullopt if it refuses sessions alone.
  std::optional<base::Failure> loginFailure(const http::Answer& answer) const;
  /// The first message of an error body, " (MESSAGE)", without secrets; empty
  /// without one.
  std::string messageIn(const http::Answer& answer) const;
  /// Takes token and URI of a session that the answer grants. Returns false if
  /// it has no token; a session may have been made all the same.
  bool adopt(const http::Answer& answer);
  /// Logs that a login may have made a session that nobody can name.
  void logLostLogin(const http::Answer& answer) const;
  /// The URI of a session that was granted without one: the only session of
  /// our user among those that the service lists; empty if that is unclear.
  std::string findSession(base::Clock::time_point until);
  /// Adds the token, or user and password, to a request.
  void authenticate(http::Request& request) const;
  std::optional<json::object> read(const std::string& target,
                                   base::Clock::time_point until);
  void useBasic();
  base::Failure fail(base::FailureKind kind, std::string cause,
                     std::string remedy) const;

  Fetcher& fetcher_;
  std::string address_;
  std::string user_;
  base::Secret password_;
  std::string loginTarget_ = "/redfish/v1/SessionService/Sessions";
  std::optional<std::uint64_t> ticket_;        ///< Of a login under way.
  std::chrono::milliseconds loginTimeout_{0};  ///< For its answer.
  base::Clock::time_point loginEnd_;           ///< When that ends.
  std::optional<http::Answer> answer_;         ///< To `begin`, not yet judged.
  base::Secret token_;
  bool granted_ = false;       ///< A session is there to be deleted.
  std::string sessionTarget_;  ///< Where to delete it.
  bool basic_ = false;
  bool tableFull_ = false;  ///< Basic is in use because no session was left.
  std::optional<base::Failure> failure_;
  std::uint64_t logins_ = 0;
  std::uint64_t logouts_ = 0;
};

}  // namespace redfish
