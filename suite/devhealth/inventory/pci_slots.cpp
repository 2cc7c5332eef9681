#include "suite/devhealth/inventory/pci_slots.h"

#include <boost/json/array.hpp>

#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Uri;

constexpr std::string_view kLabel = "Location/PartLocation/ServiceLabel";
constexpr std::string_view kSlotLabel =
    "Slot/Location/PartLocation/ServiceLabel";

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
      const std::size_t position = labels_.size();
      labels_.push_back(textAt(*slot, kLabel));
      for (const Uri& device : redfish::linksAt(*slot, "Links/PCIeDevice")) {
        byDevice_.try_emplace(device.identity(), position);
      }
      const auto [entry, isNew] =
          byLabel_.try_emplace(labels_.back(), position);
      if (!isNew) {
        entry->second = kAmbiguous;
      }
    }
  }
}

std::optional<std::size_t> PciSlots::positionOf(
    const Uri& uri, const json::object& device) const {
  const auto named = byDevice_.find(uri.identity());
  if (named != byDevice_.end()) {
    return named->second;
  }
  const std::string label = textAt(device, kSlotLabel);
  const auto labelled = byLabel_.find(label);
  if (label.empty() || labelled == byLabel_.end() ||
      labelled->second == kAmbiguous) {
    return std::nullopt;
  }
  return labelled->second;
}

bool PciSlots::isLabelOf(const std::string& text, const Uri& uri,
                         const json::object& device) const {
  if (text == textAt(device, kSlotLabel) || text == textAt(device, kLabel)) {
    return true;
  }
  const auto position = positionOf(uri, device);
  return position && labels_[*position] == text;
}

}  // namespace devhealth
