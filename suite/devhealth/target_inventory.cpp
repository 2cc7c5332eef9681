#include "suite/devhealth/target_inventory.h"

#include "suite/devhealth/local_target.h"
#include "suite/devhealth/redfish_inventory.h"

namespace devhealth {

std::unique_ptr<Inventory> inventoryOf(
    const Tarvex::TarvexConnection::ConnectionInfo& connection) {
  if (LocalTarget::is(connection)) {
    return std::make_unique<LocalTarget>();
  }
  return std::make_unique<RedfishInventory>(connection);
}

}  // namespace devhealth
