#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "suite/base/secret.h"
#include "suite/connection/in_band.h"
#include "suite/connection/password/credential.h"
#include "suite/connection/service_nodes.h"
#include "suite/connection/settings/target.h"
#include "suite/local/machine.h"
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
  std::uint64_t resumed = 0;       ///< Of them: took up a TLS session.
  std::uint64_t mostUnderWay = 0;  ///< Requests, at any time.
  std::uint64_t bytes = 0;         ///< Received.
  std::uint64_t levels = 0;        ///< Answers waited for one after another.
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
  /// allows, this machine's own controllers are looked for, and where there is
  /// none the machine itself is the target.
  Connections(ConnectMode mode, std::optional<Target> target,
              std::optional<base::Secret> environmentPassword, RunHints hints,
              InBandOptions inBand = {});
  ~Connections();  ///< Closes.

  Connections(const Connections&) = delete;
  Connections& operator=(const Connections&) = delete;

  /// The living object; null when there is none.
  static Connections* current();

  ConnectMode mode() const { return mode_; }

  /// Whether the target can be reached: reads its service root and logs in.
  /// Of this machine's own controllers one suffices, and without any a working
  /// IPMI device. A result code, 0 when it can. `info` becomes the record of
  /// the target.
  int tryTarget(Tarvex::TarvexConnection::ConnectionInfo& info);

  /// The targets of the mode: in-band one record per node of the services, or
  /// one for the machine itself; out-of-band and for an ESXi host one record,
  /// without contacting it. 0, or the result code of the failure; `list` then
  /// stays empty.
  int listTargets(std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);

  /// Logs out and closes. Never throws.
  void close() noexcept;

  /// The failure that the run's result stands for; nullopt if none was met.
  std::optional<base::Failure> failure() const;

  /// The same in one line for a person; empty if none was met.
  std::string cause() const;

  /// Whether `tryTarget` or `listTargets` has returned this result code.
  bool hasReturned(int code) const { return returned_.count(code) > 0; }

  /// What a person should know of a run that ended well: ways that were
  /// barred, files that this user may not read. A line each.
  const std::vector<std::string>& notices() const { return notices_; }

  /// Of each target that was contacted.
  std::vector<TargetCost> costs() const;

 private:
  std::optional<base::Failure> ensureService();
  std::optional<base::Failure> ensureControllers();
  std::optional<base::Failure> addService(Target target,
                                          const std::string& serviceUuid = "");
  std::optional<base::Failure> takeCredential(const Target& target);
  void trustOverIpmi(Target& target);
  std::optional<base::Failure> makeAccount(FoundController& controller);
  std::optional<base::Failure> reachAny(std::int64_t& handle);
  std::optional<base::Failure> nodes(
      std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);
  void logNode(std::size_t number, const std::string& address,
               const ServiceNode& node);
  void notice(const std::string& text);
  Tarvex::TarvexConnection::ConnectionInfo record(std::int64_t handle) const;
  int fail(base::Failure failure);

  /// A service of the pool, by its handle.
  struct Known {
    Target target;
    std::string serviceUuid;  ///< That it must have; empty: any.
  };

  ConnectMode mode_;
  std::optional<Target> target_;
  std::optional<base::Secret> environmentPassword_;
  RunHints hints_;
  InBandOptions inBand_;
  std::optional<Credential> credential_;
  redfish::Pool pool_;
  std::map<std::int64_t, Known> known_;
  std::unique_ptr<local::Machine> machine_;  ///< Without a target alone.
  bool alone_ = false;   ///< No controller was found: the machine itself is
                         ///< the target.
  bool barred_ = false;  ///< A way that the firmware names leads nowhere.
  std::optional<base::Failure> unusable_;  ///< Why there is no service.
  std::vector<std::string> notices_;
  std::set<int> returned_;  ///< Result codes of failures.
  std::size_t nodesLogged_ = 0;
};

}  // namespace connection
