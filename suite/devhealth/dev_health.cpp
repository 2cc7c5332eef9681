#include "syshealth/health/dev_health.h"

#include <optional>
#include <utility>

#include "suite/devhealth/health/alerts.h"
#include "suite/devhealth/inventory/printed_records.h"
#include "suite/devhealth/target_inventory.h"
#include "suite/run/run.h"
#include "syshealth/result/health_status.h"

namespace Tarvex::DeviceHealth {
namespace {

using devhealth::Extent;
using devhealth::Inventory;
using devhealth::Unread;

// Whether there is nothing to show. Parts that cannot be read have rows, which
// say so.
bool isMissing(const std::optional<Unread>& unread) {
  return unread && unread->extent != Extent::kParts;
}

// Keeps a failure as the run's last one. A status.
int statusOf(std::optional<Unread> unread) {
  if (!isMissing(unread)) {
    return kHealthSuccess;
  }
  if (run::Run* current = run::Run::current()) {
    current->report(std::move(unread->failure));
  }
  return unread->status;
}

// Reads a table and makes of it what is printed.
template <typename Part, typename Record>
int read(const TarvexConnection::ConnectionInfo& connection,
         std::optional<Unread> (Inventory::*table)(std::vector<Part>&),
         std::vector<Record>& records) {
  std::vector<Part> parts;
  auto unread = (devhealth::inventoryOf(connection).get()->*table)(parts);
  if (!isMissing(unread)) {
    records.clear();
    records.reserve(parts.size());
    for (const Part& part : parts) {
      records.push_back(devhealth::printed(part));
    }
  }
  return statusOf(std::move(unread));
}

}  // namespace

// The module calls this very signature.
// NOLINTNEXTLINE(modernize-pass-by-value)
DevHealth::DevHealth(const TarvexConnection::ConnectionInfo& connection)
    : connection_(connection) {}

DevHealth::~DevHealth() = default;

int DevHealth::connect() {
  return statusOf(devhealth::inventoryOf(connection_)->connect());
}

int DevHealth::getHealthSum(std::vector<Alert>& alerts) {
  return read(connection_, &Inventory::events, alerts);
}

int DevHealth::get_system(SystemBoard& system) {
  report::System found;
  auto unread = devhealth::inventoryOf(connection_)->system(found);
  if (!isMissing(unread)) {
    system = devhealth::printed(found);
  }
  return statusOf(std::move(unread));
}

int DevHealth::get_processors(std::vector<Processor>& processors) {
  return read(connection_, &Inventory::processors, processors);
}

int DevHealth::get_fans(std::vector<Fan>& fans) {
  return read(connection_, &Inventory::fans, fans);
}

int DevHealth::get_DIMMs(std::vector<DIMM>& dimms) {
  return read(connection_, &Inventory::memory, dimms);
}

int DevHealth::get_Powers(std::vector<Power>& powers) {
  return read(connection_, &Inventory::powerSupplies, powers);
}

int DevHealth::get_PCIApaters(std::vector<PCIAdapter>& adapters) {
  return read(connection_, &Inventory::pciAdapters, adapters);
}

}  // namespace Tarvex::DeviceHealth
