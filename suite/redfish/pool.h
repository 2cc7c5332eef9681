#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "suite/redfish/service.h"

namespace redfish {

/// The services of a run. The connection-settings service makes and owns the
/// pool; the device-health client and the generation probe borrow services
/// from it by handle (`ConnectionInfo::service`). Destroying it logs out of
/// every service. Single-threaded.
class Pool {
 public:
  Pool() = default;
  ~Pool();

  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;

  /// Adds a service; its handle is 1 for the first, 2 for the second, ...
  std::int64_t add(std::unique_ptr<Service> service);

  /// The service of a handle; handle 0 is the first one. Null when unknown.
  Service* find(std::int64_t handle);

  const std::vector<std::unique_ptr<Service>>& services() const {
    return services_;
  }

  /// Logs out of every service. Never throws.
  void close() noexcept;

 private:
  std::vector<std::unique_ptr<Service>> services_;
};

}  // namespace redfish
