#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "suite/base/failure.h"
#include "suite/base/progress.h"
#include "suite/base/result.h"
#include "suite/base/secret.h"
#include "suite/http/transport.h"
#include "suite/redfish/crawl/knowledge.h"
#include "suite/redfish/crawl/selection.h"
#include "suite/redfish/generation.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/reading_budget.h"
#include "suite/redfish/graph/topology.h"
#include "suite/redfish/session/fetcher.h"
#include "suite/redfish/session/login_gate.h"
#include "suite/redfish/session/session.h"

namespace redfish {

/// How a service is to be treated.
struct ServiceOptions {
  std::string user;  ///< Empty: no login.
  base::Secret password;
  int maxConnections = 4;  ///< 1 to 16.
  std::chrono::milliseconds requestTimeout{30000};
  std::chrono::milliseconds callTimeout{120000};  ///< One `read`.
  base::Clock::time_point deadline =
      base::Clock::time_point::max();  ///< The run's.
  LanAddress lan;  ///< Where to ask for IPMI when there is no Redfish.
  /// Asked before the password is sent; must outlive the service. Null: it is
  /// sent.
  LoginGate* gate = nullptr;
  /// Observes the reading; must outlive the service. Null: nobody does.
  base::Progress* progress = nullptr;
  std::size_t readingBytes = kMaxReadingBytes;  ///< See `ReadingBudget`.
  std::uint32_t prefetch = 0;  ///< Want values that will be asked for later
                               ///< in the run: read along with the first.
};

/// What a service has cost so far.
struct ServiceStats {
  http::TransportStats transport;
  std::uint64_t logins = 0;
  std::uint64_t logouts = 0;
  std::uint64_t retries = 0;
  std::uint64_t levels = 0;  ///< Longest chain of answers that had to be
                             ///< waited for one after another, that to the
                             ///< logout included.
};

/// One Redfish service for the length of a run: one login, one set of
/// connections, one graph of what has been read. Lives in the pool.
/// Single-threaded.
class Service {
 public:
  Service(ServiceOptions options, std::unique_ptr<http::Transport> transport);
  ~Service();  ///< Closes.

  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  const std::string& address() const { return transport_->address(); }

  /// Reads the service root and logs in, once per run; later calls answer
  /// what the first found. Returns nullopt on success.
  std::optional<base::Failure> open();

  /// The generation of the controller, found once per run.
  const Probed& probe();

  /// Opens, then reads all that the selection needs and that is not in the
  /// graph yet. Returns nullopt on success: the root, Systems and the node were
  /// read. Whether the collections behind a want were readable is seen in the
  /// graph.
  std::optional<base::Failure> read(const Selection& selection);

  const Graph& graph() const { return knowledge_.graph; }

  /// The node at a 0-based index, as far as it was read. Valid until the next
  /// call of `read`.
  const Node& node(std::uint16_t nodeIndex) const {
    return knowledge_.nodes.at(nodeIndex);
  }

  /// All nodes, as far as they were read. Valid until the next call of `read`.
  const Topology& topology() const { return knowledge_.nodes.topology(); }

  /// Whether the health walk of this run enters every branch.
  bool thorough() const { return (options_.prefetch & kWantThorough) != 0; }

  /// Whether something was not kept because all that was read takes more than
  /// `ServiceOptions::readingBytes`.
  bool isTooLarge() const { return knowledge_.budget.exceeded(); }

  /// When work on what was read has to be over: half a second after the end of
  /// the run, so that what came in time can still be told.
  base::Clock::time_point workEnd() const;

  /// The end from which the last resort counts: that of the work, or now where
  /// that has passed.
  base::Clock::time_point watchEnd() const;

  /// The failure that the time of the run is used up, or that the user has
  /// interrupted it, before a resource was read.
  base::Failure outOfTime(const std::string& target = "") const;

  /// Logs out. Whatever happens after that fails. Never throws.
  void close() noexcept;

  ServiceStats stats() const;

 private:
  std::optional<base::Failure> openOnce();
  /// Reads a protected resource with HTTP Basic, so that a wrong password is
  /// told as a failed login.
  std::optional<base::Failure> provePassword(const json::object& root,
                                             base::Clock::time_point until);
  /// Judges the answer to the service root; on success it is in the graph.
  std::optional<base::Failure> takeRoot(http::Answer answer,
                                        base::Clock::time_point until);
  /// The root where a service lists it under /redfish as version 1.
  base::Result<http::Answer> readOtherRoot(base::Clock::time_point until);
  /// The root in an answer, or the standard one if a login is asked for.
  base::Result<Resource> rootFrom(http::Answer answer);
  /// Heeds what the root says that the service can do.
  void takeFeatures(const json::object& root);
  base::Failure notRedfish(std::string cause) const;
  std::optional<http::Answer> readPlainly(const std::string& target,
                                          base::Clock::time_point until);
  /// Brings what a selection needs, and at first all that will be asked for.
  std::optional<base::Failure> crawl(const Selection& selection);
  /// Whether a crawl would find nothing more.
  bool isComplete(const Selection& selection) const;
  base::Clock::time_point callEnd() const;
  void readingEnded() const;  ///< Tells the observer.

  ServiceOptions options_;
  std::unique_ptr<http::Transport> transport_;
  ServiceKnowledge knowledge_;
  Fetcher fetcher_;
  Session session_;
  bool opened_ = false;
  bool entered_ = false;  ///< The gate let the login of `open` pass.
  std::optional<Probed> probed_;
  std::optional<base::Failure> lost_;  ///< Why nothing more is to be had.
  std::set<std::uint16_t> readAhead_;  ///< Nodes whose prefetch is done.
  /// The last crawl, if it went well. Where it found nothing to ask for, none
  /// for as much or less does until the graph changes.
  struct LastCrawl {
    std::uint16_t nodeIndex = 0;
    std::uint32_t wants = 0;
    std::uint64_t changes = 0;  ///< Of the graph.
    bool foundNothing = false;
  };
  std::optional<LastCrawl> lastCrawl_;
};

}  // namespace redfish
