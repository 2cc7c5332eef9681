#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "suite/base/secret.h"
#include "suite/http/transport.h"

namespace redfish {

/// What authenticates every request: a session's token, user and password for
/// HTTP Basic, or nothing.
struct Authorization {
  base::Secret token;
  std::string basicUser;
  base::Secret basicPassword;
  /// Not accepted by the service yet: one request goes out alone first, so
  /// that a wrong password is tried once.
  bool unproven = false;
};

/// A request to read one resource.
struct Fetch {
  std::string target;   ///< Path and query.
  int priority = 0;     ///< Higher goes first.
  bool patient = true;  ///< Repeat after a server error.
  std::chrono::milliseconds timeout{30000};
};

/// The final answer to a request, after all repeats.
struct FetchResult {
  std::uint64_t ticket = 0;
  unsigned generation = 0;  ///< Authorization that it was sent with.
  http::Answer answer;
};

/// Sends requests through a transport, as many at a time as the controller can
/// take, and repeats them after some failures: up to three times if the service
/// is overloaded (429, 503), after the wait that it asks for; once after a
/// gateway or server error (500, 502, 504); once on a new connection if the
/// last one was reused and reset, or lost before an answer. Follows at most
/// three redirects of a read, on the same origin. A failure halves the number
/// of requests under way; a series of good answers raises it again.
class Fetcher {
 public:
  /// At most `maxConnections` requests under way at once.
  Fetcher(http::Transport& transport, int maxConnections);

  Fetcher(const Fetcher&) = delete;
  Fetcher& operator=(const Fetcher&) = delete;

  /// Replaces what later requests carry; each call is a new generation.
  void authorize(Authorization authorization);

  /// Has the log call each target as `name` gives it back.
  void nameInLog(std::function<std::string(std::string)> name);
  unsigned generation() const { return generation_; }

  /// Queues a read. Its answer comes from `next` under the ticket returned.
  std::uint64_t get(Fetch fetch);

  /// Starts a request of any method at once, past the queue and its limit,
  /// without authorization; it is never repeated.
  std::uint64_t send(http::Request request);

  /// Waits for the next final answer, until `until` at the latest. Returns
  /// nullopt after that even if answers are there, if nothing is under way, and
  /// once the user has interrupted the run.
  std::optional<FetchResult> next(base::Clock::time_point until);

  /// Waits for the answer to a request that was sent. Answers of reads that
  /// arrive meanwhile are kept for `next`, and no queued read is started.
  /// Returns nullopt if none arrived by `until`, or if the user interrupted the
  /// run; the request then stays under way.
  std::optional<http::Answer> wait(std::uint64_t ticket,
                                   base::Clock::time_point until);

  /// Whether the service may have received a request that was sent; false only
  /// while the request waits for its connection.
  bool mayHaveArrived(std::uint64_t ticket) const;

  /// While set, an interrupt by the user ends no wait.
  void deferInterrupt(bool defer) { transport_.deferInterrupt(defer); }

  /// Whether nothing is queued, under way, or waiting for a repeat.
  bool idle() const;

  /// Abandons everything.
  void cancelAll();

  /// Sends one request at a time from now on.
  void setSerial();

  std::uint64_t retries() const { return retries_; }

 private:
  /// One queued or running read, and what has been repeated so far.
  struct Job {
    Fetch fetch;
    std::uint64_t ticket = 0;
    unsigned generation = 0;
    int overloads = 0;
    int redirects = 0;
    bool serverErrorRepeated = false;
    bool resetRepeated = false;
    bool encodingRepeated = false;
    bool http2Repeated = false;
    bool fresh = false;
  };

  void startQueued();
  void startDue(base::Clock::time_point now);
  std::optional<FetchResult> settle(http::Answer answer);
  /// Whether the job goes out again; if so it has been queued or delayed.
  bool repeated(Job& job, http::Answer& answer);
  bool redirected(Job& job, http::Answer& answer);
  void repeatAfter(Job job, std::chrono::milliseconds delay);
  int limit() const { return authorization_.unproven ? 1 : limit_; }
  void slowDown();
  void speedUp();

  http::Transport& transport_;
  int maxConnections_;
  std::function<std::string(std::string)> nameInLog_;
  int limit_;
  int goodInRow_ = 0;
  Authorization authorization_;
  unsigned generation_ = 0;
  std::uint64_t lastTicket_ = 0;
  std::uint64_t retries_ = 0;
  std::map<int, std::deque<Job>, std::greater<>> queue_;  ///< By priority.
  std::multimap<base::Clock::time_point, Job> delayed_;
  std::map<std::uint64_t, Job> reads_;            ///< By transport id.
  std::map<std::uint64_t, std::uint64_t> sends_;  ///< Transport id to ticket.
  std::deque<http::Answer> kept_;  ///< Came while a login was waited for.
};

}  // namespace redfish
