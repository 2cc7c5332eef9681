#include "suite/devhealth/redfish_inventory.h"

#include <utility>

#include "suite/devhealth/health_reader.h"
#include "suite/devhealth/inventory/dimm_mapping.h"
#include "suite/devhealth/inventory/fan_mapping.h"
#include "suite/devhealth/inventory/pci_mapping.h"
#include "suite/devhealth/inventory/power_mapping.h"
#include "suite/devhealth/inventory/processor_mapping.h"
#include "suite/devhealth/inventory/system_mapping.h"
#include "syshealth/result/health_status.h"

namespace devhealth {
namespace {

namespace records = Tarvex::DeviceHealth;

// Reads what a table needs and maps it.
template <typename Record>
int readTable(TargetReader& reader, redfish::Want want,
              Mapped<Record> (*map)(const redfish::Graph&,
                                    const redfish::Node&),
              std::vector<Record>& rows) {
  if (const int status = reader.read(want)) {
    return status;
  }
  Mapped<Record> mapped = map(reader.graph(), reader.node());
  if (mapped.failure) {
    return reader.fail(std::move(*mapped.failure));
  }
  rows = std::move(mapped.records);
  return kHealthSuccess;
}

}  // namespace

int RedfishInventory::connect() { return reader_.read(redfish::kWantSystem); }

int RedfishInventory::system(records::SystemBoard& system) {
  std::vector<records::SystemBoard> boards;
  const int status =
      readTable(reader_, redfish::kWantSystem, mapSystem, boards);
  if (status == kHealthSuccess) {
    system = std::move(boards.front());
  }
  return status;
}

int RedfishInventory::processors(std::vector<records::Processor>& processors) {
  return readTable(reader_, redfish::kWantProcessors, mapProcessors,
                   processors);
}

int RedfishInventory::fans(std::vector<records::Fan>& fans) {
  return readTable(reader_, redfish::kWantFans, mapFans, fans);
}

int RedfishInventory::dimms(std::vector<records::DIMM>& dimms) {
  return readTable(reader_, redfish::kWantDimms, mapDimms, dimms);
}

int RedfishInventory::powers(std::vector<records::Power>& powers) {
  return readTable(reader_, redfish::kWantPowers, mapPowers, powers);
}

int RedfishInventory::pciAdapters(std::vector<records::PCIAdapter>& adapters) {
  return readTable(reader_, redfish::kWantPciAdapters, mapPciAdapters,
                   adapters);
}

int RedfishInventory::health(std::vector<records::Alert>& alerts) {
  return readHealth(reader_, alerts);
}

}  // namespace devhealth
