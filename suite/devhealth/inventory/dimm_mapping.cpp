#include "suite/devhealth/inventory/dimm_mapping.h"

#include <algorithm>
#include <boost/json/array.hpp>

#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using Tarvex::DeviceHealth::DIMM;

// Whether the member is a slot without a module, or no module at all.
bool isNoModule(const json::object& memory) {
  if (redfish::isAbsent(memory)) {
    return true;
  }
  if (redfish::stringAt(memory, "MemoryType") == "Cache") {
    return true;
  }
  // Services without a Status for empty slots tell them by their capacity.
  return redfish::objectAt(memory, "Status") == nullptr &&
         numberAt(memory, "CapacityMiB") == 0.0;
}

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

DIMM dimmOf(const Part& part, const NameCounts& names) {
  DIMM row;
  if (part.object == nullptr) {
    row.description = recordText(part.uri.lastSegment());
    return row;
  }
  const json::object& memory = *part.object;
  row.description = firstTextAt(
      memory, {"Location/PartLocation/ServiceLabel", "DeviceLocator"});
  if (row.description.empty()) {
    row.description = displayName(memory, part.uri, names);
  }
  row.partNumber = firstTextAt(memory, {"PartNumber", "SparePartNumber"});
  row.serialNumber = textAt(memory, "SerialNumber");
  row.manufacturer =
      firstTextAt(memory, {"Manufacturer", "ModuleManufacturerID"});
  row.model = firstTextAt(memory, {"MemoryDeviceType", "MemoryType", "Model"});
  row.maxMemorySpeed = quantity(speedOf(memory), "MHz");
  return row;
}

}  // namespace

Mapped<DIMM> mapDimms(const redfish::Graph& graph, const redfish::Node& node) {
  std::vector<DIMM> rows;
  ReadTally tally;
  const LinkedList modules = membersAt(graph, node.system->body, "Memory");
  if (modules.failure) {
    tally.fail(*modules.failure);
  }
  for (const Part& part : modules.list.parts()) {
    if (part.object == nullptr) {
      tally.unreadable(part);
    } else {
      tally.read();
      if (isNoModule(*part.object)) {
        continue;
      }
    }
    rows.push_back(dimmOf(part, modules.list.names()));
  }
  return tableOf(std::move(rows), tally);
}

}  // namespace devhealth
