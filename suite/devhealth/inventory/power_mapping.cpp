#include "suite/devhealth/inventory/power_mapping.h"

#include <algorithm>
#include <boost/json/array.hpp>

#include "suite/devhealth/inventory/part_values.h"
#include "suite/devhealth/parts/rows/chassis_parts.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using report::PowerSupply;

// The rated output: that of the supply, else the largest of its input ranges,
// which the two models name differently. The load of the moment is none.
std::optional<double> ratedWatts(const json::object& supply, bool entry) {
  const std::string_view rangeOutput =
      entry ? "OutputWattage" : "CapacityWatts";
  std::optional<double> watts = positiveAt(supply, "PowerCapacityWatts");
  const json::array* ranges = redfish::arrayAt(supply, "InputRanges");
  if (watts || ranges == nullptr) {
    return watts;
  }
  for (const json::value& value : *ranges) {
    const json::object* range = value.if_object();
    if (range == nullptr) {
      continue;
    }
    watts = std::max(watts, positiveAt(*range, rangeOutput));
  }
  return watts;
}

}  // namespace

Mapped<PowerSupply> mapPowers(const redfish::Graph& graph,
                              const redfish::Node& node) {
  ReadTally tally;
  std::vector<PowerSupply> rows;
  for (ChassisPart& source :
       chassisParts(graph, node, redfish::powerSources(node),
                    redfish::kPowerSupplySchema, tally)) {
    PowerSupply row;
    row.id = source.part.uri.identity();
    row.name = std::move(source.name);
    if (const json::object* supply = source.part.object) {
      row.capacityWatts = ratedWatts(*supply, source.entry);
      row.manufacturer = textAt(*supply, "Manufacturer");
      row.model = textAt(*supply, "Model");
      row.partNumber = firstTextAt(*supply, {"PartNumber", "SparePartNumber"});
      row.serialNumber = textAt(*supply, "SerialNumber");
      row.health = healthOfPart(*supply);
      row.state = stateOfPart(*supply);
    }
    rows.push_back(std::move(row));
  }
  return tableOf(std::move(rows), tally);
}

}  // namespace devhealth
