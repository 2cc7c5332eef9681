#include "suite/devhealth/inventory/dimm_mapping.h"

#include <algorithm>
#include <boost/json/array.hpp>

#include "suite/devhealth/inventory/part_values.h"
#include "suite/devhealth/parts/names/jep106.h"
#include "suite/devhealth/parts/rows/system_parts.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using report::MemoryModule;

std::optional<double> fastestAllowed(const json::object& memory) {
  const json::array* speeds = redfish::arrayAt(memory, "AllowedSpeedsMHz");
  std::optional<double> fastest;
  if (speeds == nullptr) {
    return fastest;
  }
  for (const json::value& entry : *speeds) {
    const std::optional<double> speed = numberOf(entry);
    if (speed && *speed > 0) {
      fastest = std::max(fastest, speed);
    }
  }
  return fastest;
}

std::optional<double> speedOf(const json::object& memory) {
  if (const auto speed = fastestAllowed(memory)) {
    return speed;
  }
  if (const auto speed =
          positiveAt(memory, "OperatingSpeedRangeMHz/AllowableMax")) {
    return speed;
  }
  // The schema writes this one with a small z.
  return positiveAt(memory, "OperatingSpeedMhz");
}

// The name of a memory type, without what every module has in it.
std::string typeAt(const json::object& memory, std::string_view path) {
  constexpr std::string_view kChips = "_SDRAM";
  std::string type = textAt(memory, path);
  if (type == "Other") {
    return {};
  }
  if (type.size() > kChips.size() &&
      type.compare(type.size() - kChips.size(), kChips.size(), kChips) == 0) {
    type.resize(type.size() - kChips.size());
  }
  return type;
}

std::string typeOf(const json::object& memory) {
  for (const std::string_view path : {"MemoryDeviceType", "MemoryType"}) {
    std::string type = typeAt(memory, path);
    if (!type.empty()) {
      return type;
    }
  }
  return textAt(memory, "Model");
}

MemoryModule moduleOf(const NamedPart& module) {
  MemoryModule row;
  row.id = module.part.uri.identity();
  row.slot = module.name;
  if (module.part.object == nullptr) {
    return row;
  }
  const json::object& memory = *module.part.object;
  row.partNumber = firstTextAt(memory, {"PartNumber", "SparePartNumber"});
  row.serialNumber = textAt(memory, "SerialNumber");
  row.manufacturer = memoryMaker(
      firstTextAt(memory, {"Manufacturer", "ModuleManufacturerID"}));
  row.type = typeOf(memory);
  row.capacityMib = countAt(memory, "CapacityMiB");
  row.maxSpeedMhz = speedOf(memory);
  row.health = healthOfPart(memory);
  row.state = stateOfPart(memory);
  return row;
}

}  // namespace

Mapped<MemoryModule> mapDimms(const redfish::Graph& graph,
                              const redfish::Node& node) {
  std::vector<MemoryModule> rows;
  ReadTally tally;
  for (const NamedPart& module : memoryModules(graph, node, tally)) {
    rows.push_back(moduleOf(module));
  }
  return tableOf(std::move(rows), tally);
}

}  // namespace devhealth
