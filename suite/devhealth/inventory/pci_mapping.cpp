#include "suite/devhealth/inventory/pci_mapping.h"

#include <algorithm>
#include <array>
#include <boost/json/array.hpp>
#include <unordered_map>

#include "suite/devhealth/inventory/pci_devices.h"
#include "suite/devhealth/inventory/pci_slots.h"
#include "suite/devhealth/parts/chassis_parts.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Node;
using redfish::Uri;
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
    const std::string message = textAt(*condition, "Message");
    if (message.empty()) {
      continue;
    }
    if (!texts.empty()) {
      texts += "; ";
    }
    texts += message;
  }
  return recordText(texts);
}

// The fields that a device and a network adapter name alike.
PCIAdapter commonFields(const json::object& part) {
  PCIAdapter record;
  record.tag = textAt(part, "Id");
  record.manufacturer = textAt(part, "Manufacturer");
  record.model = textAt(part, "Model");
  record.serialNumber = textAt(part, "SerialNumber");
  record.partNumber = textAt(part, "PartNumber");
  record.sku = textAt(part, "SKU");
  record.operationalStatus = textAt(part, "Status/State");
  record.statusDescriptions = statusTexts(part);
  return record;
}

// What is known of an adapter fills the empty fields of its device.
void fillGaps(PCIAdapter& record, const PCIAdapter& adapter) {
  using Field = std::string PCIAdapter::*;
  constexpr std::array<Field, 7> kFields = {&PCIAdapter::manufacturer,
                                            &PCIAdapter::model,
                                            &PCIAdapter::serialNumber,
                                            &PCIAdapter::partNumber,
                                            &PCIAdapter::sku,
                                            &PCIAdapter::operationalStatus,
                                            &PCIAdapter::statusDescriptions};
  for (const Field field : kFields) {
    if ((record.*field).empty()) {
      record.*field = adapter.*field;
    }
  }
}

struct Row {
  Part part;
  PCIAdapter record;
  std::optional<std::size_t> slot;
};

class Rows {
 public:
  Rows(const Graph& graph, const Node& node)
      : graph_(graph), slots_(graph, node), names_(graph) {}

  void addDevice(const Part& part);

  // Before the first adapter: no devices come after this.
  void sortBySlot();

  // Fills the gaps of the rows that the adapter is, or adds a row.
  void addAdapter(const Part& part);

  std::vector<PCIAdapter> finish();

 private:
  bool mergeByLink(const Part& part, const PCIAdapter& adapter);
  bool mergeBySerial(const PCIAdapter& adapter);
  void describe(Row& row, bool device);
  void makeTagsUnique();
  std::string chassisId(const Part& part) const;

  const Graph& graph_;
  PciSlots slots_;
  SiblingNames names_;
  std::vector<Row> rows_;
  std::size_t devices_ = 0;  // Rows of devices; the others follow them.
  std::unordered_map<std::string, std::size_t> byIdentity_;
  // Rows of devices by serial and part number, which both must be known.
  std::unordered_map<std::string, std::size_t> bySerial_;
};

std::string serialKey(const PCIAdapter& record) {
  if (record.serialNumber.empty() || record.partNumber.empty()) {
    return {};
  }
  return record.serialNumber + '\n' + record.partNumber;
}

void Rows::addDevice(const Part& part) {
  Row row;
  row.part = part;
  if (part.object != nullptr) {
    row.record = commonFields(*part.object);
    if (row.record.sku.empty()) {
      row.record.sku = textAt(*part.object, "SparePartNumber");
    }
    row.slot = slots_.positionOf(part.uri, *part.object);
  }
  rows_.push_back(std::move(row));
}

void Rows::sortBySlot() {
  std::stable_sort(rows_.begin(), rows_.end(),
                   [](const Row& left, const Row& right) {
                     if (left.slot && right.slot) {
                       return *left.slot < *right.slot;
                     }
                     return left.slot.has_value() && !right.slot.has_value();
                   });
  devices_ = rows_.size();
  for (std::size_t index = 0; index < rows_.size(); ++index) {
    byIdentity_.try_emplace(rows_[index].part.uri.identity(), index);
    const std::string key = serialKey(rows_[index].record);
    if (!key.empty()) {
      bySerial_.try_emplace(key, index);
    }
  }
}

void Rows::addAdapter(const Part& part) {
  Row row;
  row.part = part;
  if (part.object != nullptr) {
    row.record = commonFields(*part.object);
    if (mergeByLink(part, row.record) || mergeBySerial(row.record)) {
      return;
    }
  }
  rows_.push_back(std::move(row));
}

bool Rows::mergeByLink(const Part& part, const PCIAdapter& adapter) {
  const json::array* controllers =
      redfish::arrayAt(*part.object, "Controllers");
  if (controllers == nullptr) {
    return false;
  }
  bool merged = false;
  for (const json::value& value : *controllers) {
    const json::object* controller = value.if_object();
    if (controller == nullptr) {
      continue;
    }
    for (const Uri& link : redfish::linksAt(*controller, "Links/PCIeDevices")) {
      const auto row = byIdentity_.find(link.identity());
      if (row == byIdentity_.end()) {
        continue;
      }
      fillGaps(rows_[row->second].record, adapter);
      merged = true;
    }
  }
  return merged;
}

bool Rows::mergeBySerial(const PCIAdapter& adapter) {
  const auto row = bySerial_.find(serialKey(adapter));
  if (row == bySerial_.end()) {
    return false;
  }
  fillGaps(rows_[row->second].record, adapter);
  return true;
}

void Rows::describe(Row& row, bool device) {
  std::string& description = row.record.description;
  if (row.part.object == nullptr) {
    description = recordText(row.part.uri.lastSegment());
    return;
  }
  const json::object& part = *row.part.object;
  description = displayName(part, row.part.uri, names_.of(row.part.uri));
  // A device called by its slot says nothing of what is in it.
  if (device && !row.record.model.empty() &&
      slots_.isLabelOf(description, row.part.uri, part)) {
    description += " " + row.record.model;
  }
}

std::string Rows::chassisId(const Part& part) const {
  std::string_view document = part.uri.document();
  std::optional<Uri> holder;
  if (redfish::segmentOf(document, 2) != "Chassis" && part.object != nullptr) {
    const auto chassis = redfish::linksAt(*part.object, "Links/Chassis");
    if (!chassis.empty()) {
      holder = chassis.front();
    }
  }
  if (holder) {
    document = holder->document();
  }
  const std::string_view segment = redfish::segmentOf(document, 3);
  if (segment.empty()) {
    return {};
  }
  const auto end = static_cast<std::size_t>(segment.data() - document.data()) +
                   segment.size();
  const redfish::Resource* resource = graph_.find(document.substr(0, end));
  const std::string id =
      resource == nullptr ? std::string() : textAt(resource->body, "Id");
  return id.empty() ? recordText(segment) : id;
}

void Rows::makeTagsUnique() {
  std::unordered_map<std::string, int> counts;
  for (const Row& row : rows_) {
    ++counts[row.record.tag];
  }
  for (Row& row : rows_) {
    std::string& tag = row.record.tag;
    if (tag.empty() || counts[tag] < 2) {
      continue;
    }
    const std::string prefix = chassisId(row.part);
    if (!prefix.empty()) {
      tag = prefix + "/" + tag;
    }
  }
}

std::vector<PCIAdapter> Rows::finish() {
  makeTagsUnique();
  std::vector<PCIAdapter> records;
  records.reserve(rows_.size());
  for (std::size_t index = 0; index < rows_.size(); ++index) {
    Row& row = rows_[index];
    describe(row, index < devices_);
    if (row.record.operationalStatus.empty()) {
      row.record.operationalStatus = "Unknown";
    }
    records.push_back(std::move(row.record));
  }
  return records;
}

}  // namespace

Mapped<PCIAdapter> mapPciAdapters(const Graph& graph, const Node& node) {
  ReadTally tally;
  if (const auto failure = chassisFailure(graph, node)) {
    tally.fail(*failure);
  }
  Rows rows(graph, node);
  for (const Part& part : pciDevices(graph, node, tally)) {
    rows.addDevice(part);
  }
  rows.sortBySlot();
  for (const Part& part : networkAdapters(graph, node, tally)) {
    rows.addAdapter(part);
  }
  return tableOf(rows.finish(), tally);
}

}  // namespace devhealth
