#include "suite/devhealth/target_inventory.h"

#include <cstdint>

#include "suite/devhealth/local_target.h"
#include "suite/devhealth/redfish_inventory.h"
#include "suite/run/run.h"

namespace devhealth {

std::unique_ptr<Inventory> inventoryOf(
    const Tarvex::TarvexConnection::ConnectionInfo& connection) {
  run::Run* const current = run::Run::current();
  if (connection.service == run::kThisMachine) {
    return std::make_unique<LocalTarget>(
        current == nullptr ? nullptr : current->machine());
  }
  // Nodes count on over the services of a run.
  const auto index =
      static_cast<std::uint16_t>(connection.nodeIndex - connection.firstNode);
  return std::make_unique<RedfishInventory>(TargetReader(
      current == nullptr ? nullptr : current->pool().find(connection.service),
      connection.address, index));
}

}  // namespace devhealth
