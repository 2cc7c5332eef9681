#pragma once

#include <vector>

#include "syshealth/health/alert.h"
#include "syshealth/host/connection_info.h"
#include "syshealth/host/export.h"
#include "syshealth/inventory/components.h"

namespace Tarvex::DeviceHealth {

/// Client of one target's device-health service. It borrows the run's service
/// from the connection library, so making one is cheap.
///
/// Every call answers a status: 0 success, and the argument holds the data;
/// -1 no connection, -2 refused by the target, -3 the data cannot be read,
/// -4 not supported by the target, any other an internal failure. On failure
/// the argument's contents are not to be used.
class BRIVEL_SUITE_API DevHealth {
 public:
  explicit DevHealth(const TarvexConnection::ConnectionInfo& connection);
  ~DevHealth();

  DevHealth(const DevHealth&) = delete;
  DevHealth& operator=(const DevHealth&) = delete;

  /// Opens the connection to the target, so that its failure can be told from
  /// that of a reading call.
  int connect();

  /// Fills the empty list with the target's active events.
  int getHealthSum(std::vector<Alert>& alerts);

  // The inventory: each call connects by itself where need be. An empty list
  // with status 0 is a target without such parts.
  int get_system(SystemBoard& system);
  int get_processors(std::vector<Processor>& processors);
  int get_fans(std::vector<Fan>& fans);
  int get_DIMMs(std::vector<DIMM>& dimms);
  int get_Powers(std::vector<Power>& powers);
  int get_PCIApaters(std::vector<PCIAdapter>& adapters);

 private:
  TarvexConnection::ConnectionInfo connection_;
};

}  // namespace Tarvex::DeviceHealth
