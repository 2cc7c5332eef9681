#include "syshealth/health/dev_health.h"

#include "suite/devhealth/target_inventory.h"

namespace Tarvex::DeviceHealth {

using devhealth::inventoryOf;

// The module calls this very signature.
// NOLINTNEXTLINE(modernize-pass-by-value)
DevHealth::DevHealth(const TarvexConnection::ConnectionInfo& connection)
    : connection_(connection) {}

DevHealth::~DevHealth() = default;

int DevHealth::connect() { return inventoryOf(connection_)->connect(); }

int DevHealth::getHealthSum(std::vector<Alert>& alerts) {
  return inventoryOf(connection_)->health(alerts);
}

int DevHealth::get_system(SystemBoard& system) {
  return inventoryOf(connection_)->system(system);
}

int DevHealth::get_processors(std::vector<Processor>& processors) {
  return inventoryOf(connection_)->processors(processors);
}

int DevHealth::get_fans(std::vector<Fan>& fans) {
  return inventoryOf(connection_)->fans(fans);
}

int DevHealth::get_DIMMs(std::vector<DIMM>& dimms) {
  return inventoryOf(connection_)->dimms(dimms);
}

int DevHealth::get_Powers(std::vector<Power>& powers) {
  return inventoryOf(connection_)->powers(powers);
}

int DevHealth::get_PCIApaters(std::vector<PCIAdapter>& adapters) {
  return inventoryOf(connection_)->pciAdapters(adapters);
}

}  // namespace Tarvex::DeviceHealth
