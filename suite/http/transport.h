#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "suite/base/clock.h"
#include "suite/base/failure.h"
#include "suite/base/secret.h"

namespace http {

/// Largest body that a transport delivers, after decoding. A request whose
/// answer is larger fails; others are not affected.
constexpr std::size_t kMaxBodyBytes = std::size_t{16} << 20U;

/// Most bytes of bodies that a transport holds at a time, for requests that
/// are under way or not yet returned by `next`. A request that exceeds it
/// fails.
constexpr std::size_t kMaxHeldBytes = std::size_t{24} << 20U;

/// Most bytes of headers that a transport accepts for one answer.
constexpr std::size_t kMaxHeaderBytes = std::size_t{64} << 10U;

enum class Method { kGet, kPost, kDelete };

/// One request to the service's origin.
struct Request {
  Method method = Method::kGet;
  std::string target;  ///< Path and query, e.g. "/redfish/v1/Systems".
  /// What the log calls the target; empty: as it is. A service may have put a
  /// secret into it.
  std::string logTarget;
  base::Secret body;  ///< JSON of a POST.
  /// Header X-Auth-Token, beside those that every request carries (Accept,
  /// OData-Version, User-Agent, and Content-Type of a POST); empty: none.
  base::Secret authToken;
  /// User and password for preemptive HTTP Basic; both empty: none.
  std::string basicUser;
  base::Secret basicPassword;
  std::chrono::milliseconds timeout{30000};
  /// Use a new connection, because the last one was lost.
  bool freshConnection = false;
  /// Of requests that wait for a connection, the highest is sent first.
  int priority = 0;
};

/// The answer to one request, or the reason for having none.
struct Answer {
  std::uint64_t id = 0;  ///< As `start` returned it.
  /// Set if no complete answer arrived; `status` is 0 then.
  std::optional<base::Failure> failure;
  bool reusedConnection = false;  ///< The request went over a kept-alive one.
  bool lostBeforeAnswer = false;  ///< With kUnreachable: the connection was
                                  ///< lost after the request was sent, before
                                  ///< any of the answer came.
  bool badEncoding = false;       ///< The failure is a wrong compression.
  bool http2Error = false;        ///< The failure may be one of HTTP/2: bad
                                  ///< framing, or a connection that spoke it
                                  ///< and was lost.
  bool http2 = false;             ///< The answer came over HTTP/2.
  int status = 0;                 ///< HTTP status.
  std::string location;           ///< Header Location.
  base::Secret authToken;         ///< Header X-Auth-Token.
  std::string retryAfter;         ///< Header Retry-After; a date in seconds
                                  ///< from the answer's Date if it has one.
  std::string body;               ///< Decoded, within the limits.
  std::string shownPin;           ///< Pin of the key that the server showed
                                  ///< last, trusted or not; empty: none yet.
};

/// What a transport has used so far.
struct TransportStats {
  std::uint64_t requests = 0;      ///< Requests sent.
  std::uint64_t connections = 0;   ///< Connections opened.
  std::uint64_t resumed = 0;       ///< Of them: took up a TLS session.
  std::uint64_t mostUnderWay = 0;  ///< Requests at a time.
  std::uint64_t bytes = 0;         ///< Bytes of bodies received, as sent.
};

/// Sends requests to one origin: over HTTPS, or to a directory that holds a
/// recorded server. Requests run concurrently; their answers are returned one
/// by one, in the order in which they complete. Single-threaded. Destroying
/// it abandons the requests under way.
class Transport {
 public:
  virtual ~Transport() = default;

  /// The origin as text, for messages: "10.0.0.5:443", "file:DIR".
  virtual const std::string& address() const = 0;

  /// Whether sessions, queries and time limits have a meaning; false for a
  /// recorded server.
  virtual bool live() const = 0;

  /// Starts a request and returns its id. Never fails: errors are reported by
  /// the answer.
  virtual std::uint64_t start(Request request) = 0;

  /// Waits for the next complete answer, until `until` at the latest. Returns
  /// nullopt if none arrived by then, if nothing is under way, or if the user
  /// interrupted the run while waiting.
  virtual std::optional<Answer> next(base::Clock::time_point until) = 0;

  /// While set, `next` keeps waiting although the user interrupted the run:
  /// for the answer to a login that must be undone, and for a logout.
  virtual void deferInterrupt(bool /*defer*/) {}

  /// Whether the service may have received a request: false only while the
  /// request waits for its connection.
  virtual bool mayHaveArrived(std::uint64_t /*id*/) const { return true; }

  /// Abandons everything under way.
  virtual void cancelAll() = 0;

  /// Stops offering compression, or HTTP/2, for the rest of the run.
  virtual void disableCompression() {}
  virtual void disableHttp2() {}

  virtual TransportStats stats() const = 0;
};

}  // namespace http
