#include "suite/devhealth/inventory/pci_mapping.h"

#include <boost/json/array.hpp>
#include <string>
#include <unordered_map>
#include <utility>

#include "suite/devhealth/inventory/part_values.h"
#include "suite/devhealth/parts/pci/pci_cards.h"
#include "suite/devhealth/parts/rows/chassis_parts.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Node;
using report::PciAdapter;

// Health and the messages of the active conditions of a part.
std::string statusTexts(const json::object& part) {
  std::string texts = textAt(part, "Status/Health");
  const json::array* conditions = redfish::arrayAt(part, "Status/Conditions");
  if (conditions == nullptr) {
    return texts;
  }
  for (const json::value& value : *conditions) {
    const json::object* condition = value.if_object();
    if (condition == nullptr) {
      continue;
    }
    const std::string message = plainTextAt(*condition, "Message");
    if (message.empty()) {
      continue;
    }
    if (!texts.empty()) {
      texts += "; ";
    }
    texts += message;
  }
  return plainText(texts);
}

PciAdapter adapterOf(const PciCard& card) {
  PciAdapter adapter;
  adapter.id = card.part.part.uri.identity();
  adapter.name = card.name;
  adapter.tag = pciTagOf(card.part);
  adapter.slot = card.slot;
  adapter.manufacturer = card.fields.manufacturer;
  adapter.model = card.fields.model;
  adapter.serialNumber = card.fields.serialNumber;
  adapter.partNumber = card.fields.partNumber;
  adapter.sku = card.fields.sku;
  if (const json::object* part = card.part.part.object) {
    adapter.health = healthOfPart(*part);
    adapter.state = stateOfPart(*part);
    adapter.stateText = textAt(*part, "Status/State");
    adapter.statusText = statusTexts(*part);
  }
  return adapter;
}

// The Id of the chassis that a part is in: a device of a system names it.
std::string chassisIdOf(const Graph& graph, const Part& part) {
  const bool inChassis =
      redfish::segmentOf(part.uri.document(), 2) == "Chassis";
  if (!inChassis && part.object != nullptr) {
    const auto chassis = redfish::linksAt(*part.object, "Links/Chassis");
    if (!chassis.empty()) {
      return holderId(graph, chassis.front());
    }
  }
  return holderId(graph, part.uri);
}

void makeTagsUnique(const Graph& graph, const std::vector<PciCard>& cards,
                    std::vector<PciAdapter>& adapters) {
  std::unordered_map<std::string, int> counts;
  for (const PciAdapter& adapter : adapters) {
    ++counts[adapter.tag];
  }
  for (std::size_t i = 0; i < adapters.size(); ++i) {
    std::string& tag = adapters[i].tag;
    if (tag.empty() || counts[tag] < 2) {
      continue;
    }
    const std::string prefix = chassisIdOf(graph, cards[i].part.part);
    if (!prefix.empty()) {
      tag = prefix + "/" + tag;
    }
  }
}

}  // namespace

Mapped<PciAdapter> mapPciAdapters(const Graph& graph, const Node& node) {
  ReadTally tally;
  if (const auto failure = chassisFailure(graph, node)) {
    tally.fail(*failure);
  }
  const std::vector<PciCard> cards = pciCards(graph, node, tally);
  std::vector<PciAdapter> adapters;
  adapters.reserve(cards.size());
  for (const PciCard& card : cards) {
    adapters.push_back(adapterOf(card));
  }
  makeTagsUnique(graph, cards, adapters);
  return tableOf(std::move(adapters), tally);
}

}  // namespace devhealth
