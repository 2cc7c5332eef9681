#include "suite/devhealth/inventory/system_mapping.h"

#include <algorithm>
#include <string>

#include "suite/devhealth/parts/machine_name.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using Tarvex::DeviceHealth::SystemBoard;

std::string makerAndModel(const json::object& machine) {
  return machineName(textAt(machine, "Manufacturer"), textAt(machine, "Model"));
}

// A UUID as served; empty for the two that stand for none.
std::string uuidOf(const json::object& machine) {
  const std::string uuid = textAt(machine, "UUID");
  const auto isAll = [&uuid](std::string_view digits) {
    return std::all_of(uuid.begin(), uuid.end(), [digits](char c) {
      return c == '-' || digits.find(c) != std::string_view::npos;
    });
  };
  return isAll("0") || isAll("Ff") ? std::string() : uuid;
}

const std::string& orElse(const std::string& first, const std::string& second) {
  return first.empty() ? second : first;
}

}  // namespace

Mapped<SystemBoard> mapSystem(const redfish::Graph& graph,
                              const redfish::Node& node) {
  Mapped<SystemBoard> result;
  static const json::object kNoChassis;
  const json::object& system = node.system->body;
  const json::object& chassis =
      node.chassis.empty() ? kNoChassis : node.chassis.front()->body;

  SystemBoard board;
  board.machineName = makerAndModel(system);
  if (board.machineName.empty()) {
    board.machineName = makerAndModel(chassis);
  }
  if (board.machineName.empty()) {
    board.machineName = textAt(system, "HostName");
  }
  if (board.machineName.empty()) {
    const redfish::Uri& uri = node.system->uri;
    board.machineName = displayName(system, uri, SiblingNames(graph).of(uri));
  }
  board.machineTypeModel =
      orElse(firstTextAt(system, {"SKU", "PartNumber", "SubModel", "Model"}),
             firstTextAt(chassis, {"SKU", "PartNumber", "Model"}));
  board.serialNumber =
      orElse(textAt(system, "SerialNumber"), textAt(chassis, "SerialNumber"));
  board.uuid = orElse(uuidOf(system), uuidOf(chassis));
  result.records.push_back(std::move(board));
  return result;
}

}  // namespace devhealth
