#include "suite/devhealth/inventory/local_inventory.h"

#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "suite/devhealth/inventory/row_names.h"
#include "suite/devhealth/parts/names/jep106.h"
#include "suite/devhealth/parts/names/machine_name.h"
#include "suite/devhealth/parts/row_order.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

using report::Fan;
using report::Health;
using report::MemoryModule;
using report::PciAdapter;
using report::PowerSupply;
using report::Processor;
using report::State;
using report::System;

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

Health healthOf(local::ProcessorState state) {
  switch (state) {
    case local::ProcessorState::kEnabled:
    case local::ProcessorState::kDisabledByUser:  // Wanted, not broken.
    case local::ProcessorState::kIdle:
      return Health::kNormal;
    case local::ProcessorState::kFailed:
      return Health::kError;
    case local::ProcessorState::kUnknown:
      break;
  }
  return Health::kUnknown;
}

Health healthOf(local::FanState state) {
  switch (state) {
    case local::FanState::kOk:
      return Health::kNormal;
    case local::FanState::kAlarm:
      return Health::kWarning;
    case local::FanState::kFault:
      return Health::kError;
  }
  return Health::kUnknown;
}

Health healthOf(const local::SupplyFacts& supply) {
  Health health = Health::kUnknown;
  switch (supply.state) {
    case local::SupplyState::kOk:
      health = Health::kNormal;
      break;
    case local::SupplyState::kNonCritical:
      health = Health::kWarning;
      break;
    case local::SupplyState::kCritical:
      return Health::kError;
    case local::SupplyState::kUnknown:
      break;
  }
  return supply.unplugged ? Health::kWarning : health;
}

State stateOf(local::ProcessorState state) {
  switch (state) {
    case local::ProcessorState::kEnabled:
      return State::kEnabled;
    case local::ProcessorState::kDisabledByUser:
    case local::ProcessorState::kFailed:
      return State::kDisabled;
    case local::ProcessorState::kIdle:
      return State::kStandbySpare;
    case local::ProcessorState::kUnknown:
      break;
  }
  return State::kUnknown;
}

// The measured speed, else the target: registers of targets without a sensor
// behind them hold anything. A negative reading is none, and a target of 0 is
// that of a chip which leaves the speed to others.
std::optional<double> fanRpm(const local::FanFacts& fan) {
  if (fan.measuredRpm && *fan.measuredRpm >= 0) {
    return static_cast<double>(*fan.measuredRpm);
  }
  if (fan.targetRpm && *fan.targetRpm > 0) {
    return static_cast<double>(*fan.targetRpm);
  }
  return std::nullopt;
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

// Gives parts their distinct names, which tell them apart too, and sorts them
// by these.
template <typename Part>
void name(std::vector<Part>& parts, std::string Part::*column,
          const std::vector<RowName>& rows, std::string_view classWord) {
  std::vector<std::string> names = distinctNames(rows, classWord);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    parts[i].id = names[i];
    parts[i].*column = std::move(names[i]);
  }
  sortNaturally(parts, column);
}

}  // namespace

System systemOf(const local::SystemFacts& facts,
                const local::BoardFacts& board) {
  System system;
  system.name =
      machineName(recordText(facts.manufacturer), recordText(facts.product));
  if (system.name.empty()) {
    system.name =
        machineName(recordText(board.manufacturer), recordText(board.product));
  }
  system.typeModel = firstText({stockNumber(facts.sku), facts.family,
                                facts.version, board.product, board.version});
  system.serialNumber = firstText({facts.serial, board.serial});
  system.uuid = recordText(facts.uuid);
  return system;
}

std::vector<Processor> processorsOf(
    const std::vector<local::ProcessorFacts>& processors) {
  std::vector<Processor> parts;
  std::vector<RowName> names;
  for (const local::ProcessorFacts& facts : processors) {
    Processor part;
    part.model = firstText({facts.version, facts.family});
    part.speedMhz = facts.currentMhz;
    part.maxSpeedMhz = facts.maxMhz;
    part.cores = facts.cores;
    part.threads = facts.threads;
    part.health = healthOf(facts.state);
    part.state = stateOf(facts.state);
    parts.push_back(std::move(part));
    names.push_back({recordText(facts.socket), ""});
  }
  name(parts, &Processor::name, names, "Processor");
  return parts;
}

std::vector<Fan> fansOf(const std::vector<local::FanFacts>& fans) {
  std::vector<Fan> parts;
  std::vector<RowName> names;
  for (const local::FanFacts& facts : fans) {
    Fan part;
    part.speedRpm = fanRpm(facts);
    part.health = healthOf(facts.state);
    parts.push_back(std::move(part));
    names.push_back({recordText(facts.label),
                     joined(recordText(facts.chip), recordText(facts.input))});
  }
  name(parts, &Fan::name, names, "Fan");
  return parts;
}

std::vector<MemoryModule> dimmsOf(
    const std::vector<local::MemoryFacts>& modules) {
  std::vector<MemoryModule> parts;
  std::vector<RowName> names;
  for (const local::MemoryFacts& facts : modules) {
    MemoryModule part;
    part.partNumber = recordText(facts.partNumber);
    part.serialNumber = recordText(facts.serial);
    part.manufacturer = memoryMaker(recordText(facts.manufacturer));
    part.type = recordText(facts.type);
    part.maxSpeedMts = facts.maxSpeed;
    part.capacityMib = facts.capacityMib;
    parts.push_back(std::move(part));
    names.push_back({recordText(facts.locator), recordText(facts.bank)});
  }
  name(parts, &MemoryModule::slot, names, "DIMM");
  return parts;
}

std::vector<PowerSupply> powersOf(
    const std::vector<local::SupplyFacts>& supplies) {
  std::vector<PowerSupply> parts;
  std::vector<RowName> names;
  for (const local::SupplyFacts& facts : supplies) {
    PowerSupply part;
    part.capacityWatts = facts.capacityWatts;
    part.health = healthOf(facts);
    parts.push_back(std::move(part));
    names.push_back({recordText(facts.name), recordText(facts.location)});
  }
  name(parts, &PowerSupply::name, names, "Power Supply");
  return parts;
}

std::vector<PciAdapter> pciAdaptersOf(
    const std::vector<local::PciFacts>& adapters) {
  std::vector<PciAdapter> parts;
  for (const local::PciFacts& facts : adapters) {
    PciAdapter part;
    part.tag = addressText(facts.address);
    part.id = part.tag;
    part.slot = recordText(facts.slot);
    part.manufacturer = recordText(facts.manufacturer);
    part.model = recordText(facts.model);
    part.name = joined(part.slot, part.model);
    if (part.name.empty()) {
      part.name = idsText(facts);
    }
    part.serialNumber = recordText(facts.serial);
    part.partNumber = recordText(facts.partNumber);
    part.state = facts.driverBound ? State::kEnabled : State::kDisabled;
    part.stateText = facts.driverBound ? "Enabled" : "Disabled";
    parts.push_back(std::move(part));
  }
  sortNaturally(parts, &PciAdapter::name);
  return parts;
}

}  // namespace devhealth
