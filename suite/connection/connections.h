#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/connection/secret.h"
#include "suite/connection/target.h"
#include "suite/redfish/pool.h"
#include "syshealth/host/connect_info.h"

namespace connection {

/// What the run will ask for, as far as the command line tells.
struct RunHints {
  std::uint32_t wants = 0;  ///< `redfish::Want` values.
  int node = 0;             ///< 1-based node asked for; 0: every one.
};

/// What one target has cost.
struct TargetCost {
  std::string address;
  std::uint64_t logins = 0;
  std::uint64_t requests = 0;
  std::uint64_t retries = 0;
  std::uint64_t connections = 0;
  std::uint64_t bytes = 0;   ///< Received.
  std::uint64_t levels = 0;  ///< Answers waited for one after another.
};

/// The run's connections, behind `ConnectInfo`: while an object lives,
/// `ConnectInfo::Getinstance` gives the service, which answers from it; before
/// and after it gives null. The host keeps one for the length of the run.
///
/// Nothing is contacted, and no password asked for, before an application
/// wants to know its targets.
class Connections {
 public:
  /// The connections of a mode. Without a target, which only the in-band mode
  /// allows, every question is answered with the failure that says so.
  Connections(ConnectMode mode, std::optional<Target> target,
              std::optional<Secret> environmentPassword, RunHints hints);
  ~Connections();  ///< Closes.

  Connections(const Connections&) = delete;
  Connections& operator=(const Connections&) = delete;

  /// The living object; null when there is none.
  static Connections* current();

  ConnectMode mode() const { return mode_; }

  /// Whether the target can be reached: reads its service root and logs in.
  /// A result code, 0 when it can. `info` becomes the record of the target.
  int tryTarget(Tarvex::TarvexConnection::ConnectionInfo& info);

  /// The targets of the mode: in-band one record per node of the service;
  /// out-of-band and for an ESXi host one record, without contacting it. 0, or
  /// the result code of the failure; `list` then stays empty.
  int listTargets(std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);

  /// Logs out and closes. Never throws.
  void close() noexcept;

  /// The failure that the run's result stands for, in one line for a person;
  /// empty when none was met.
  std::string cause() const;

  /// Of each target that was contacted.
  std::vector<TargetCost> costs() const;

 private:
  std::optional<redfish::Failure> ensureService();
  std::optional<redfish::Failure> nodes(
      std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);
  Tarvex::TarvexConnection::ConnectionInfo record() const;
  int fail(redfish::Failure failure);

  ConnectMode mode_;
  std::optional<Target> target_;
  std::optional<Secret> environmentPassword_;
  RunHints hints_;
  std::string credentialOrigin_;
  redfish::Pool pool_;
  std::optional<redfish::Failure> unusable_;  ///< Why there is no service.
};

}  // namespace connection
