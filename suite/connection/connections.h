#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "suite/base/progress.h"
#include "suite/base/secret.h"
#include "suite/connection/in_band.h"
#include "suite/connection/run_services.h"
#include "suite/connection/service_nodes.h"
#include "suite/connection/settings/target.h"
#include "suite/run/run.h"
#include "syshealth/host/connect_info.h"

namespace connection {

/// What the run will ask for, as far as the command line tells.
struct RunHints {
  std::uint32_t wants = 0;  ///< `redfish::Want` values.
  std::optional<int> node;  ///< Number of the node asked for, from 1; nullopt:
                            ///< none in particular.
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

/// A run as `ConnectInfo` sees it: while an object exists,
/// `ConnectInfo::Getinstance` returns the service, which answers from it;
/// otherwise it returns null. The host makes one for the length of the run.
///
/// Nothing is contacted, and no password asked for, before an application
/// wants to know its targets.
class Connections : public run::Run {
 public:
  /// The connections of a mode. Without a target, which only the in-band mode
  /// allows, this machine's own controllers are looked for; if there is none,
  /// the machine itself is the target.
  Connections(ConnectMode mode, std::optional<Target> target,
              std::optional<base::Secret> environmentPassword, RunHints hints,
              InBandOptions inBand = {});
  ~Connections() override;  ///< Closes.

  Connections(const Connections&) = delete;
  Connections& operator=(const Connections&) = delete;

  /// The current run if it is one of these; else null.
  static Connections* current();

  ConnectMode mode() const { return mode_; }

  /// Records what the run reads. To be called before the first target is asked
  /// for; `recording` must outlive this object.
  void recordInto(RunRecording& recording) { services_.recordInto(&recording); }

  /// Has `progress` observe what is read. To be called before the first target
  /// is asked for; `progress` must outlive this object.
  void showProgress(base::Progress& progress) {
    services_.showProgress(&progress);
  }

  /// Checks whether the target can be reached: reads its service root and logs
  /// in. Of this machine's own controllers one suffices, and without any a
  /// working IPMI device. Returns a result code, 0 if it can. `info` becomes
  /// the record of the target.
  int tryTarget(Tarvex::TarvexConnection::ConnectionInfo& info);

  /// Lists the targets of the mode: in-band one record per node of the
  /// services, or one for the machine itself; out-of-band one record, of the
  /// node that is asked for or of the first; for an ESXi host one record,
  /// without contacting it. Returns 0, or the result code of the failure;
  /// `list` then stays empty.
  ///
  /// Both this and `tryTarget` throw a `base::Failure` to end the run at once:
  /// if the user has interrupted it, and out-of-band if the service has no such
  /// node (`kUsage`).
  int listTargets(std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);

  /// Like `listTargets`, but out-of-band, too, one record per node of the
  /// service. The node that is asked for has to exist in every mode.
  int listNodes(std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);

  /// Says what the application will ask for, as `redfish::Want` values, where
  /// its options do not tell. To be called before anything is listed.
  void expect(std::uint32_t wants);

  /// Number of the node that is asked for, from 1; nullopt: none in
  /// particular.
  std::optional<int> askedNode() const { return hints_.node; }

  /// What the user calls the target: its name in the settings, else its
  /// address, else "this server".
  std::string targetName() const;

  /// Where the target is: "HOST:PORT" or "file:DIR"; "this server".
  std::string targetAddress() const;

  /// Logs out and closes. Never throws.
  void close() noexcept;

  /// The failure that the run's result stands for; nullopt if none was met.
  std::optional<base::Failure> failure() const;

  /// The same in one line for a person; empty if none was met.
  std::string cause() const;

  /// Whether `tryTarget` or `listTargets` has returned this result code.
  bool hasReturned(int code) const { return returned_.count(code) > 0; }

  /// What a person should know about a run that succeeded: ways that were
  /// blocked, files that this user may not read. One line each.
  std::vector<std::string> notices() const;

  /// What each target has cost that was contacted.
  std::vector<TargetCost> costs() const;

 private:
  std::optional<base::Failure> nodes(
      std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);
  std::optional<base::Failure> chosenNode(
      std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);
  void reportUnlisted(std::size_t count);
  void logNode(std::size_t number, const std::string& address,
               const ServiceNode& node);
  Tarvex::TarvexConnection::ConnectionInfo record(std::int64_t handle) const;
  int fail(base::Failure failure);
  base::Failure explained(base::Failure failure) const;

  ConnectMode mode_;
  bool everyNode_ = false;  ///< Out-of-band, too.
  RunHints hints_;
  RunServices services_;
  std::set<int> returned_;  ///< Result codes of failures.
  std::size_t nodesLogged_ = 0;
};

}  // namespace connection
