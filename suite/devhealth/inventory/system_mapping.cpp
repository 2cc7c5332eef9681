#include "suite/devhealth/inventory/system_mapping.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <string>

#include "suite/base/ascii.h"
#include "suite/devhealth/inventory/part_values.h"
#include "suite/devhealth/parts/names/machine_name.h"
#include "suite/devhealth/parts/names/sibling_names.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using report::System;

std::string makerAndModel(const json::object& machine) {
  return machineName(textAt(machine, "Manufacturer"), textAt(machine, "Model"));
}

// A UUID in small letters; empty for the two that stand for none.
std::string uuidOf(const json::object& machine) {
  const std::string uuid = base::lowerCase(textAt(machine, "UUID"));
  const auto isAll = [&uuid](char digit) {
    return std::all_of(uuid.begin(), uuid.end(),
                       [digit](char c) { return c == '-' || c == digit; });
  };
  return isAll('0') || isAll('f') ? std::string() : uuid;
}

const std::string& orElse(const std::string& first, const std::string& second) {
  return first.empty() ? second : first;
}

// Whether a text stands as a service tag anywhere inside a value.
bool holdsServiceTag(const json::value& value, const std::string& tag) {
  if (const json::array* array = value.if_array()) {
    return std::any_of(array->begin(), array->end(),
                       [&tag](const json::value& element) {
                         return holdsServiceTag(element, tag);
                       });
  }
  const json::object* object = value.if_object();
  return object != nullptr &&
         std::any_of(object->begin(), object->end(),
                     [&tag](const json::key_value_pair& member) {
                       if (member.key() == "ServiceTag") {
                         return base::equalIgnoringCase(textOf(member.value()),
                                                        tag);
                       }
                       return holdsServiceTag(member.value(), tag);
                     });
}

// The service tag of a machine, which some makers put where the stock number
// belongs: the SKU, where the maker's own part of the system or the service
// root calls it that. Empty for other machines.
std::string serviceTagOf(const redfish::Graph& graph,
                         const json::object& system) {
  std::string sku = textAt(system, "SKU");
  if (sku.empty()) {
    return {};
  }
  const redfish::Resource* root = redfish::serviceRoot(graph);
  for (const json::object* holder :
       {&system, root == nullptr ? nullptr : &root->body}) {
    const json::value* makers =
        holder == nullptr ? nullptr : redfish::memberAt(*holder, "Oem");
    if (makers != nullptr && holdsServiceTag(*makers, sku)) {
      return sku;
    }
  }
  return {};
}

// Type and model, where the SKU is one.
std::string typeOf(const json::object& system, const json::object& chassis) {
  std::string type = stockNumber(textAt(system, "SKU"));
  if (type.empty()) {
    type = firstTextAt(system, {"PartNumber", "SubModel", "Model"});
  }
  if (type.empty()) {
    type = stockNumber(textAt(chassis, "SKU"));
  }
  return orElse(type, firstTextAt(chassis, {"PartNumber", "Model"}));
}

// Type and model, where the SKU is the service tag and the part number that of
// the board.
std::string typeBesideTag(const json::object& system,
                          const json::object& chassis, const std::string& tag) {
  std::string type = firstTextAt(system, {"SubModel", "Model"});
  for (const std::string_view path : {"SKU", "PartNumber", "Model"}) {
    const std::string text = textAt(chassis, path);
    if (type.empty() && !base::equalIgnoringCase(text, tag)) {
      type = stockNumber(text);
    }
  }
  return type;
}

}  // namespace

Mapped<System> mapSystem(const redfish::Graph& graph,
                         const redfish::Node& node) {
  Mapped<System> result;
  static const json::object kNoChassis;
  const json::object& system = node.system->body;
  const json::object& chassis =
      node.chassis.empty() ? kNoChassis : node.chassis.front()->body;
  const std::string tag = serviceTagOf(graph, system);

  System board;
  board.name = makerAndModel(system);
  if (board.name.empty()) {
    board.name = makerAndModel(chassis);
  }
  if (board.name.empty()) {
    board.name = textAt(system, "HostName");
  }
  if (board.name.empty()) {
    board.name = SiblingNames(graph).nameOf(node.system->uri, system);
  }
  board.typeModel = tag.empty() ? typeOf(system, chassis)
                                : typeBesideTag(system, chassis, tag);
  board.serialNumber = tag;
  if (tag.empty()) {
    board.serialNumber =
        orElse(textAt(system, "SerialNumber"), textAt(chassis, "SerialNumber"));
  }
  board.uuid = orElse(uuidOf(system), uuidOf(chassis));
  board.powerState = powerStateOf(system);
  board.firmwareVersion = textAt(system, "BiosVersion");
  if (!node.managers.empty()) {
    board.controllerFirmwareVersion =
        textAt(node.managers.front()->body, "FirmwareVersion");
  }
  result.records.push_back(std::move(board));
  return result;
}

}  // namespace devhealth
