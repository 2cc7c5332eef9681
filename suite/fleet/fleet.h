#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "suite/base/clock.h"
#include "suite/base/secret.h"
#include "suite/connection/connections.h"
#include "suite/fleet/credentials.h"
#include "suite/fleet/members.h"
#include "suite/redfish/service.h"
#include "suite/run/run.h"

namespace fleet {

/// How far a run is.
struct Progress {
  std::size_t read = 0;  ///< Targets that are done, failed ones included.
  std::size_t failed = 0;
  std::size_t all = 0;
};

/// How the targets of a run are read.
struct FleetOptions {
  int fanout = 64;  ///< Targets at a time.
  /// For all of them together, from the first on; nullopt: no limit.
  std::optional<std::chrono::milliseconds> total;
  /// Of each target, the node of this number alone; nullopt: every node.
  std::optional<int> node;
  std::optional<base::Secret> environmentPassword;
  /// Told now and then, by the thread that takes the reports; may be empty.
  std::function<void(const Progress&)> progress;
};

/// A run that reads several targets. The host makes one for the length of the
/// run, in the place of `Connections`. The pool that all runs have stays empty:
/// each thread opens and closes the services of its own targets.
class Fleet : public run::Run {
 public:
  Fleet(std::vector<Member> members, FleetOptions options);
  ~Fleet() override;

  Fleet(const Fleet&) = delete;
  Fleet& operator=(const Fleet&) = delete;

  /// The current run if it reads several targets; else null.
  static Fleet* current();

  const std::vector<Member>& members() const { return members_; }
  int fanout() const { return options_.fanout; }
  std::optional<int> node() const { return options_.node; }

  /// Starts the time of the run, and finds the passwords that its targets
  /// take: the last moment at which a person is asked. Once in a run.
  void begin();

  /// The service of a member, which has contacted nothing yet, or why there is
  /// none. `wants` are the `redfish::Want` values that will be read, and
  /// `readingBytes` is what may be kept of it (`redfish::ReadingBudget`). May
  /// be called from several threads after `begin`.
  base::Result<std::unique_ptr<redfish::Service>> open(
      std::size_t member, std::uint32_t wants, std::size_t readingBytes) const;

  /// Adds up what a service has cost, after it was closed. Any thread.
  void addCost(const redfish::ServiceStats& stats);

  /// What all of them have cost together.
  connection::TargetCost cost() const;

  void showProgress(const Progress& progress) const;

 private:
  std::vector<Member> members_;
  FleetOptions options_;
  Credentials credentials_;
  base::Clock::time_point until_ = base::Clock::time_point::max();
  mutable std::mutex mutex_;  // Of the cost.
  connection::TargetCost cost_;
};

}  // namespace fleet
