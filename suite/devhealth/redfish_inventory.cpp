#include "suite/devhealth/redfish_inventory.h"

#include <utility>

#include "suite/devhealth/health_reader.h"
#include "suite/devhealth/inventory/dimm_mapping.h"
#include "suite/devhealth/inventory/fan_mapping.h"
#include "suite/devhealth/inventory/pci_mapping.h"
#include "suite/devhealth/inventory/power_mapping.h"
#include "suite/devhealth/inventory/processor_mapping.h"
#include "suite/devhealth/inventory/system_mapping.h"
#include "suite/devhealth/parts/rows/system_parts.h"

namespace devhealth {
namespace {

// Reads what a table needs and maps it.
template <typename Row>
std::optional<Unread> readTable(TargetReader& reader, redfish::Want want,
                                Mapped<Row> (*map)(const redfish::Graph&,
                                                   const redfish::Node&),
                                std::vector<Row>& rows) {
  if (auto unread = reader.read(want)) {
    return unread;
  }
  return reader.work([&]() -> std::optional<Unread> {
    Mapped<Row> mapped = map(reader.graph(), reader.node());
    if (mapped.failure) {
      return reader.fail(std::move(*mapped.failure), Extent::kItem);
    }
    rows = std::move(mapped.records);
    if (mapped.gap) {
      return reader.fail(std::move(*mapped.gap), Extent::kParts);
    }
    return std::nullopt;
  });
}

}  // namespace

std::optional<Unread> RedfishInventory::connect() {
  return reader_.read(redfish::kWantSystem);
}

std::optional<Unread> RedfishInventory::system(report::System& system) {
  std::vector<report::System> systems;
  auto unread = readTable(reader_, redfish::kWantSystem, mapSystem, systems);
  if (!unread) {
    system = std::move(systems.front());
  }
  return unread;
}

std::optional<Unread> RedfishInventory::processors(
    std::vector<report::Processor>& processors) {
  return readTable(reader_, redfish::kWantProcessors, mapProcessors,
                   processors);
}

std::optional<Unread> RedfishInventory::fans(std::vector<report::Fan>& fans) {
  return readTable(reader_, redfish::kWantFans, mapFans, fans);
}

std::optional<Unread> RedfishInventory::memory(
    std::vector<report::MemoryModule>& modules) {
  return readTable(reader_, redfish::kWantDimms, mapDimms, modules);
}

std::optional<Unread> RedfishInventory::powerSupplies(
    std::vector<report::PowerSupply>& supplies) {
  return readTable(reader_, redfish::kWantPowers, mapPowers, supplies);
}

std::optional<Unread> RedfishInventory::pciAdapters(
    std::vector<report::PciAdapter>& adapters) {
  return readTable(reader_, redfish::kWantPciAdapters, mapPciAdapters,
                   adapters);
}

std::optional<Unread> RedfishInventory::events(
    std::vector<report::Event>& events) {
  return readHealth(reader_, events);
}

std::optional<std::size_t> RedfishInventory::memoryPlaces() {
  return devhealth::memoryPlaces(reader_.graph(), reader_.node());
}

}  // namespace devhealth
