#pragma once

#include <memory>

#include "suite/devhealth/inventory.h"
#include "syshealth/host/connection_info.h"

namespace devhealth {

/// The inventory of the target that a connection leads to: a node of a Redfish
/// service, or this machine itself.
std::unique_ptr<Inventory> inventoryOf(
    const Tarvex::TarvexConnection::ConnectionInfo& connection);

}  // namespace devhealth
