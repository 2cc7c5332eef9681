#include "suite/devhealth/inventory/local_inventory.h"

#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "suite/devhealth/inventory/row_names.h"
#include "suite/devhealth/parts/health_text.h"
#include "suite/devhealth/parts/names/jep106.h"
#include "suite/devhealth/parts/names/machine_name.h"
#include "suite/devhealth/parts/row_order.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

using Tarvex::DeviceHealth::DIMM;
using Tarvex::DeviceHealth::Fan;
using Tarvex::DeviceHealth::PCIAdapter;
using Tarvex::DeviceHealth::Power;
using Tarvex::DeviceHealth::Processor;
using Tarvex::DeviceHealth::SystemBoard;

// The first text that is a value.
std::string firstText(std::initializer_list<std::string_view> texts) {
  for (const std::string_view text : texts) {
    std::string value = recordText(text);
    if (!value.empty()) {
      return value;
    }
  }
  return {};
}

// Two texts with a blank between, or the one that is not empty.
std::string joined(const std::string& first, const std::string& second) {
  return first.empty() || second.empty() ? first + second
                                         : first + " " + second;
}

std::string megahertz(std::optional<unsigned> speed) {
  return speed ? std::to_string(*speed) : std::string();
}

std::string health(redfish::Health health) {
  return std::string(healthWord(health));
}

redfish::Health healthOf(local::ProcessorState state) {
  switch (state) {
    case local::ProcessorState::kEnabled:
    case local::ProcessorState::kDisabledByUser:  // Wanted, not broken.
    case local::ProcessorState::kIdle:
      return redfish::Health::kOk;
    case local::ProcessorState::kFailed:
      return redfish::Health::kCritical;
    case local::ProcessorState::kUnknown:
      break;
  }
  return redfish::Health::kUnknown;
}

redfish::Health healthOf(local::FanState state) {
  switch (state) {
    case local::FanState::kOk:
      return redfish::Health::kOk;
    case local::FanState::kAlarm:
      return redfish::Health::kWarning;
    case local::FanState::kFault:
      return redfish::Health::kCritical;
  }
  return redfish::Health::kUnknown;
}

redfish::Health healthOf(const local::SupplyFacts& supply) {
  redfish::Health health = redfish::Health::kUnknown;
  switch (supply.state) {
    case local::SupplyState::kOk:
      health = redfish::Health::kOk;
      break;
    case local::SupplyState::kNonCritical:
      health = redfish::Health::kWarning;
      break;
    case local::SupplyState::kCritical:
      return redfish::Health::kCritical;
    case local::SupplyState::kUnknown:
      break;
  }
  return supply.unplugged ? redfish::Health::kWarning : health;
}

// The measured speed, else the target: registers of targets without a sensor
// behind them hold anything. A negative reading is none, and a target of 0 is
// that of a chip which leaves the speed to others.
std::string fanSpeed(const local::FanFacts& fan) {
  if (fan.measuredRpm && *fan.measuredRpm >= 0) {
    return std::to_string(*fan.measuredRpm) + " RPM";
  }
  if (fan.targetRpm && *fan.targetRpm > 0) {
    return std::to_string(*fan.targetRpm) + " RPM";
  }
  return {};
}

std::string addressText(const local::PciAddress& address) {
  char text[32];
  std::snprintf(text, sizeof text, "%04x:%02x:%02x.%x",
                static_cast<unsigned>(address.segment),
                static_cast<unsigned>(address.bus),
                static_cast<unsigned>(address.device),
                static_cast<unsigned>(address.function));
  return text;
}

std::string idsText(const local::PciFacts& adapter) {
  char text[32];
  std::snprintf(text, sizeof text, "PCI device %04x:%04x",
                static_cast<unsigned>(adapter.vendorId),
                static_cast<unsigned>(adapter.deviceId));
  return text;
}

// Gives records their distinct names and sorts them by these.
template <typename Record>
void name(std::vector<Record>& records, std::string Record::*column,
          const std::vector<RowName>& rows, std::string_view classWord) {
  std::vector<std::string> names = distinctNames(rows, classWord);
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i].*column = std::move(names[i]);
  }
  sortNaturally(records, column);
}

}  // namespace

SystemBoard systemBoardOf(const local::SystemFacts& system,
                          const local::BoardFacts& board) {
  SystemBoard record;
  record.machineName =
      machineName(recordText(system.manufacturer), recordText(system.product));
  if (record.machineName.empty()) {
    record.machineName =
        machineName(recordText(board.manufacturer), recordText(board.product));
  }
  record.machineTypeModel =
      firstText({stockNumber(system.sku), system.family, system.version,
                 board.product, board.version});
  record.serialNumber = firstText({system.serial, board.serial});
  record.uuid = recordText(system.uuid);
  return record;
}

std::vector<Processor> processorsOf(
    const std::vector<local::ProcessorFacts>& processors) {
  std::vector<Processor> records;
  std::vector<RowName> names;
  for (const local::ProcessorFacts& processor : processors) {
    Processor record;
    record.family = firstText({processor.version, processor.family});
    record.currentClockSpeed = megahertz(processor.currentMhz);
    record.maxClockSpeed = megahertz(processor.maxMhz);
    record.healthState = health(healthOf(processor.state));
    records.push_back(std::move(record));
    names.push_back({recordText(processor.socket), ""});
  }
  name(records, &Processor::name, names, "Processor");
  return records;
}

std::vector<Fan> fansOf(const std::vector<local::FanFacts>& fans) {
  std::vector<Fan> records;
  std::vector<RowName> names;
  for (const local::FanFacts& fan : fans) {
    Fan record;
    record.desiredSpeed = fanSpeed(fan);
    record.healthState = health(healthOf(fan.state));
    records.push_back(std::move(record));
    names.push_back({recordText(fan.label),
                     joined(recordText(fan.chip), recordText(fan.input))});
  }
  name(records, &Fan::elementName, names, "Fan");
  return records;
}

std::vector<DIMM> dimmsOf(const std::vector<local::MemoryFacts>& modules) {
  std::vector<DIMM> records;
  std::vector<RowName> names;
  for (const local::MemoryFacts& module : modules) {
    DIMM record;
    record.partNumber = recordText(module.partNumber);
    record.serialNumber = recordText(module.serial);
    record.manufacturer = memoryMaker(recordText(module.manufacturer));
    record.model = recordText(module.type);
    if (module.maxSpeed) {
      record.maxMemorySpeed = std::to_string(*module.maxSpeed) + " MT/s";
    }
    records.push_back(std::move(record));
    names.push_back({recordText(module.locator), recordText(module.bank)});
  }
  name(records, &DIMM::description, names, "DIMM");
  return records;
}

std::vector<Power> powersOf(const std::vector<local::SupplyFacts>& supplies) {
  std::vector<Power> records;
  std::vector<RowName> names;
  for (const local::SupplyFacts& supply : supplies) {
    Power record;
    if (supply.capacityWatts) {
      record.totalOutputPower = std::to_string(*supply.capacityWatts) + " W";
    }
    record.healthState = health(healthOf(supply));
    records.push_back(std::move(record));
    names.push_back({recordText(supply.name), recordText(supply.location)});
  }
  name(records, &Power::elementName, names, "Power Supply");
  return records;
}

std::vector<PCIAdapter> pciAdaptersOf(
    const std::vector<local::PciFacts>& adapters) {
  std::vector<PCIAdapter> records;
  for (const local::PciFacts& adapter : adapters) {
    PCIAdapter record;
    record.tag = addressText(adapter.address);
    record.manufacturer = recordText(adapter.manufacturer);
    record.model = recordText(adapter.model);
    record.description = joined(recordText(adapter.slot), record.model);
    if (record.description.empty()) {
      record.description = idsText(adapter);
    }
    record.serialNumber = recordText(adapter.serial);
    record.partNumber = recordText(adapter.partNumber);
    record.operationalStatus = adapter.driverBound ? "Enabled" : "Disabled";
    records.push_back(std::move(record));
  }
  sortNaturally(records, &PCIAdapter::description);
  return records;
}

}  // namespace devhealth
