#include "syshealth/health/dev_health.h"

#include <utility>

#include "suite/devhealth/failure_status.h"
#include "suite/devhealth/health_reader.h"
#include "suite/devhealth/inventory/dimm_mapping.h"
#include "suite/devhealth/inventory/fan_mapping.h"
#include "suite/devhealth/inventory/pci_mapping.h"
#include "suite/devhealth/inventory/power_mapping.h"
#include "suite/devhealth/inventory/processor_mapping.h"
#include "suite/devhealth/inventory/system_mapping.h"
#include "suite/devhealth/local_target.h"
#include "suite/devhealth/target_reader.h"

namespace Tarvex::DeviceHealth {
namespace {

using devhealth::kStatusSuccess;
using devhealth::LocalTarget;
using devhealth::TargetReader;

// Reads what a table needs and maps it.
template <typename Record>
int readTable(const TarvexConnection::ConnectionInfo& connection,
              redfish::Want want,
              devhealth::Mapped<Record> (*map)(const redfish::Graph&,
                                               const redfish::Node&),
              std::vector<Record>& records) {
  TargetReader reader(connection);
  const int status = reader.read(want);
  if (status != kStatusSuccess) {
    return status;
  }
  devhealth::Mapped<Record> mapped = map(reader.graph(), reader.node());
  if (mapped.failure) {
    return reader.fail(std::move(*mapped.failure));
  }
  records = std::move(mapped.records);
  return kStatusSuccess;
}

}  // namespace

// The module calls this very signature.
// NOLINTNEXTLINE(modernize-pass-by-value)
DevHealth::DevHealth(const TarvexConnection::ConnectionInfo& connection)
    : connection_(connection) {}

DevHealth::~DevHealth() = default;

int DevHealth::connect() {
  if (LocalTarget::is(connection_)) {
    return kStatusSuccess;
  }
  return TargetReader(connection_).read(redfish::kWantSystem);
}

int DevHealth::getHealthSum(std::vector<Alert>& alerts) {
  if (LocalTarget::is(connection_)) {
    return LocalTarget().health();
  }
  TargetReader reader(connection_);
  return devhealth::readHealth(reader, alerts);
}

int DevHealth::get_system(SystemBoard& system) {
  if (LocalTarget::is(connection_)) {
    return LocalTarget().system(system);
  }
  std::vector<SystemBoard> boards;
  const int status = readTable(connection_, redfish::kWantSystem,
                               devhealth::mapSystem, boards);
  if (status == kStatusSuccess) {
    system = std::move(boards.front());
  }
  return status;
}

int DevHealth::get_processors(std::vector<Processor>& processors) {
  if (LocalTarget::is(connection_)) {
    return LocalTarget().processors(processors);
  }
  return readTable(connection_, redfish::kWantProcessors,
                   devhealth::mapProcessors, processors);
}

int DevHealth::get_fans(std::vector<Fan>& fans) {
  if (LocalTarget::is(connection_)) {
    return LocalTarget().fans(fans);
  }
  return readTable(connection_, redfish::kWantFans, devhealth::mapFans, fans);
}

int DevHealth::get_DIMMs(std::vector<DIMM>& dimms) {
  if (LocalTarget::is(connection_)) {
    return LocalTarget().dimms(dimms);
  }
  return readTable(connection_, redfish::kWantDimms, devhealth::mapDimms,
                   dimms);
}

int DevHealth::get_Powers(std::vector<Power>& powers) {
  if (LocalTarget::is(connection_)) {
    return LocalTarget().powers(powers);
  }
  return readTable(connection_, redfish::kWantPowers, devhealth::mapPowers,
                   powers);
}

int DevHealth::get_PCIApaters(std::vector<PCIAdapter>& adapters) {
  if (LocalTarget::is(connection_)) {
    return LocalTarget().pciAdapters(adapters);
  }
  return readTable(connection_, redfish::kWantPciAdapters,
                   devhealth::mapPciAdapters, adapters);
}

}  // namespace Tarvex::DeviceHealth
