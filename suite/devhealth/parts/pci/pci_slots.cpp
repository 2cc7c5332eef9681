#include "suite/devhealth/parts/pci/pci_slots.h"

#include <boost/json/array.hpp>

#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Uri;

// The label of an object with a Location (Resource schema).
std::string placeLabel(const json::object& object) {
  std::string label = textAt(object, "Location/PartLocation/ServiceLabel");
  if (!label.empty()) {
    return label;
  }
  const std::string number =
      textAt(object, "Location/PartLocation/LocationOrdinalValue");
  return number.empty() ? std::string() : "Slot " + number;
}

}  // namespace

PciSlots::PciSlots(const redfish::Graph& graph, const redfish::Node& node) {
  for (const redfish::Resource* chassis : node.chassis) {
    const json::object* document =
        graph.follow(chassis->body, "PCIeSlots").object;
    const json::array* slots =
        document == nullptr ? nullptr : redfish::arrayAt(*document, "Slots");
    if (slots == nullptr) {
      continue;
    }
    for (const json::value& value : *slots) {
      const json::object* slot = value.if_object();
      if (slot == nullptr) {
        continue;
      }
      const std::string label = placeLabel(*slot);
      for (const Uri& device : redfish::linksAt(*slot, "Links/PCIeDevice")) {
        byDevice_.try_emplace(device.identity(), label);
      }
    }
  }
}

std::string PciSlots::labelOf(const Uri& uri,
                              const json::object& device) const {
  const auto named = byDevice_.find(uri.identity());
  if (named != byDevice_.end() && !named->second.empty()) {
    return named->second;
  }
  if (const json::object* slot = redfish::objectAt(device, "Slot")) {
    std::string label = placeLabel(*slot);
    if (!label.empty()) {
      return label;
    }
  }
  std::string text = textAt(device, "Location");
  return text.empty() ? textAt(device, "Location/PartLocation/ServiceLabel")
                      : text;
}

}  // namespace devhealth
