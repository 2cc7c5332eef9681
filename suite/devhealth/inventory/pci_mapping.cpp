#include "suite/devhealth/inventory/pci_mapping.h"

#include <boost/json/array.hpp>
#include <string>
#include <unordered_map>
#include <utility>

#include "suite/devhealth/parts/pci/pci_cards.h"
#include "suite/devhealth/parts/rows/chassis_parts.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Node;
using Tarvex::DeviceHealth::PCIAdapter;

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

PCIAdapter recordOf(const PciCard& card) {
  PCIAdapter record;
  record.description = card.name;
  record.tag = pciTagOf(card.part);
  record.manufacturer = card.fields.manufacturer;
  record.model = card.fields.model;
  record.serialNumber = card.fields.serialNumber;
  record.partNumber = card.fields.partNumber;
  record.sku = card.fields.sku;
  if (card.part.part.object != nullptr) {
    record.operationalStatus = textAt(*card.part.part.object, "Status/State");
    record.statusDescriptions = statusTexts(*card.part.part.object);
  }
  if (record.operationalStatus.empty()) {
    record.operationalStatus = "Unknown";
  }
  return record;
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
                    std::vector<PCIAdapter>& records) {
  std::unordered_map<std::string, int> counts;
  for (const PCIAdapter& record : records) {
    ++counts[record.tag];
  }
  for (std::size_t i = 0; i < records.size(); ++i) {
    std::string& tag = records[i].tag;
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

Mapped<PCIAdapter> mapPciAdapters(const Graph& graph, const Node& node) {
  ReadTally tally;
  if (const auto failure = chassisFailure(graph, node)) {
    tally.fail(*failure);
  }
  const std::vector<PciCard> cards = pciCards(graph, node, tally);
  std::vector<PCIAdapter> records;
  records.reserve(cards.size());
  for (const PciCard& card : cards) {
    records.push_back(recordOf(card));
  }
  makeTagsUnique(graph, cards, records);
  return tableOf(std::move(records), tally);
}

}  // namespace devhealth
