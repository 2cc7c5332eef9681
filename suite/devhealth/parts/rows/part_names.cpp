#include "suite/devhealth/parts/rows/part_names.h"

#include "suite/devhealth/parts/pci/pci_cards.h"
#include "suite/devhealth/parts/rows/chassis_parts.h"
#include "suite/devhealth/parts/rows/system_parts.h"

namespace devhealth {

using redfish::Uri;

std::string PartNames::nameOf(const Uri& uri,
                              const redfish::json::object& part) {
  if (!tablesRead_) {
    tablesRead_ = true;
    readTables();
  }
  const auto row = rows_.find(uri.identity());
  return row == rows_.end()
             ? withClassWord(classOf(uri, part), siblings_.nameOf(uri, part))
             : row->second;
}

void PartNames::readTables() {
  ReadTally tally;  // What is missing in a table has no name there.
  const auto keep = [this](const Uri& uri, const std::string& name) {
    rows_.emplace(uri.identity(), name);
  };
  for (const NamedPart& row : centralProcessors(graph_, node_, tally)) {
    keep(row.part.uri, row.name);
  }
  for (const NamedPart& row : memoryModules(graph_, node_, tally)) {
    keep(row.part.uri, row.name);
  }
  for (const ChassisPart& row :
       chassisParts(graph_, node_, redfish::coolingSources(node_),
                    redfish::kFanSchema, tally)) {
    keep(row.part.uri, row.name);
  }
  for (const ChassisPart& row :
       chassisParts(graph_, node_, redfish::powerSources(node_),
                    redfish::kPowerSupplySchema, tally)) {
    keep(row.part.uri, row.name);
  }
  for (const PciCard& card : pciCards(graph_, node_, tally)) {
    keep(card.part.part.uri, card.name);
    for (const PciPart& part : card.also) {
      keep(part.part.uri, card.name);
    }
  }
}

}  // namespace devhealth
