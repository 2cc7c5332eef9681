#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "suite/base/failure.h"
#include "suite/redfish/service.h"

namespace redfish {

/// Handle (`ConnectionInfo::service`) of a target that no service stands for
/// and nobody asks: a VMware ESXi host. The generation probe lets it pass, so
/// that the application comes to its own answer for that connection mode.
constexpr std::int64_t kNoService = -1;

/// The services of a run. The connection-settings service makes and owns the
/// pool; the device-health client and the generation probe borrow services
/// from it by handle (`ConnectionInfo::service`). Destroying it logs out of
/// every service. Single-threaded.
class Pool {
 public:
  Pool();
  ~Pool();

  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;

  /// The run's pool; null outside a run.
  static Pool* current();

  /// Adds a service; its handle is 1 for the first, 2 for the second, ...
  std::int64_t add(std::unique_ptr<Service> service);

  /// The service of a handle; handle 0 is the first one. Null when unknown.
  Service* find(std::int64_t handle);

  const std::vector<std::unique_ptr<Service>>& services() const {
    return services_;
  }

  /// The failure that the run's result stands for, so that the host can tell
  /// its cause: the last one that was reported.
  void report(base::Failure failure) { lastFailure_ = std::move(failure); }
  const std::optional<base::Failure>& lastFailure() const {
    return lastFailure_;
  }

  /// Logs out of every service. Never throws.
  void close() noexcept;

 private:
  std::vector<std::unique_ptr<Service>> services_;
  std::optional<base::Failure> lastFailure_;
};

}  // namespace redfish
