#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "suite/redfish/failure.h"
#include "suite/redfish/graph.h"
#include "suite/redfish/transport.h"

namespace redfish {

/// What a run wants to know of a node; values are OR-ed.
enum Want : std::uint32_t {
  kWantSystem = 1U << 0,
  kWantProcessors = 1U << 1,
  kWantFans = 1U << 2,
  kWantDimms = 1U << 3,
  kWantPowers = 1U << 4,
  kWantPciAdapters = 1U << 5,
  kWantHealth = 1U << 6,
  /// With kWantHealth: the health walk enters every branch, whatever the
  /// roll-ups say.
  kWantThorough = 1U << 7
};

/// What one reading of the service is to bring into its graph.
struct Selection {
  std::uint16_t nodeIndex = 0;
  std::uint32_t wants = 0;  ///< Want values.
  /// Document keys of holders (system, chassis, managers) whose roll-up is
  /// worse than all that was found below them: the branches that the health
  /// walk skipped there are entered after all.
  std::set<std::string> unexplained;
  /// Further resources, such as the origins of conditions and registries.
  std::vector<Uri> extras;
};

/// How a service is to be treated.
struct ServiceOptions {
  std::string user;      ///< Empty: no login.
  std::string password;  ///< Wiped when the service dies.
  int maxConnections = 4;                          ///< 1 to 16.
  std::chrono::milliseconds requestTimeout{30000};
  std::chrono::milliseconds callTimeout{120000};   ///< One `read`.
  Clock::time_point deadline = Clock::time_point::max();  ///< The run's.
  std::uint32_t prefetch = 0;  ///< Want values that will be asked for later
                               ///< in the run: read along with the first.
};

/// What a service has cost so far.
struct ServiceStats {
  TransportStats transport;
  std::uint64_t logins = 0;
  std::uint64_t logouts = 0;
  std::uint64_t retries = 0;
  std::uint64_t levels = 0;  ///< Longest chain of answers that had to be
                             ///< waited for one after another.
};

/// One Redfish service for the length of a run: one login, one set of
/// connections, one graph of what has been read. Lives in the pool.
/// Single-threaded.
class Service {
 public:
  Service(ServiceOptions options, std::unique_ptr<Transport> transport);
  ~Service();  ///< Closes.

  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  const std::string& address() const { return transport_->address(); }

  /// Reads the service root and logs in, once per run; later calls answer
  /// what the first found. Nothing on success.
  std::optional<Failure> open();

  /// Opens, then reads all that the selection needs and that is not in the
  /// graph yet. Nothing on success: the root, Systems and the node were read.
  /// Whether the collections behind a want were readable is seen in the graph.
  std::optional<Failure> read(const Selection& selection);

  const Graph& graph() const { return graph_; }

  /// Logs out. Whatever happens after that fails. Never throws.
  void close() noexcept;

  ServiceStats stats() const;

 private:
  ServiceOptions options_;
  std::unique_ptr<Transport> transport_;
  Graph graph_;
};

}  // namespace redfish
