#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "suite/base/failure.h"
#include "suite/local/machine.h"
#include "suite/redfish/pool.h"

namespace run {

/// Handles (`ConnectionInfo::service`) that stand for no service of the pool,
/// whose handles are 1 and above.
enum ReservedHandle : std::int64_t {
  /// A target that nobody asks: a VMware ESXi host. The generation probe lets
  /// it pass, so that the application comes to its own answer for that
  /// connection mode.
  kNoService = -1,
  kThisMachine = -2,  ///< The machine itself, without any service.
};

/// What the parts of a run share: the services, the machine itself, and the
/// failure that the run's result stands for. The connection service makes one
/// for the length of the run; the device-health client and the generation
/// probe find it by `current`. Single-threaded.
class Run {
 public:
  /// Makes this the current run.
  Run();
  virtual ~Run();

  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  /// The current run; null if there is none.
  static Run* current();

  redfish::Pool& pool() { return pool_; }
  const redfish::Pool& pool() const { return pool_; }

  /// The machine itself; null if the run is about another one.
  local::Machine* machine() const { return machine_.get(); }
  void setMachine(std::unique_ptr<local::Machine> machine) {
    machine_ = std::move(machine);
  }

  /// Keeps a failure so that the host can tell the cause of the run's result:
  /// the last one that was reported.
  void report(base::Failure failure) { lastFailure_ = std::move(failure); }
  const std::optional<base::Failure>& lastFailure() const {
    return lastFailure_;
  }

 private:
  redfish::Pool pool_;
  std::unique_ptr<local::Machine> machine_;
  std::optional<base::Failure> lastFailure_;
};

}  // namespace run
