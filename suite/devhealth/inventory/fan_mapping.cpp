#include "suite/devhealth/inventory/fan_mapping.h"

#include "suite/base/ascii.h"
#include "suite/devhealth/inventory/part_values.h"
#include "suite/devhealth/parts/rows/chassis_parts.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using report::Fan;

// A speed as served. A negative one means that it is unknown, 0 that the fan
// stands still.
std::optional<double> speedAt(const json::object& fan, std::string_view path) {
  const std::optional<double> speed = numberAt(fan, path);
  return speed && *speed >= 0 ? speed : std::nullopt;
}

// Speed of a Fan resource. The excerpt of its sensor stands in the resource;
// some services give the bare percentage instead.
void readResourceSpeed(const json::object& object, Fan& fan) {
  fan.speedRpm = speedAt(object, "SpeedPercent/SpeedRPM");
  fan.speedPercent = speedAt(object, "SpeedPercent/Reading");
  if (!fan.speedPercent) {
    fan.speedPercent = speedAt(object, "SpeedPercent");
  }
}

// Speed of an entry of the older document.
void readEntrySpeed(const json::object& entry, Fan& fan) {
  constexpr double kLargestPercentage = 100;
  const auto reading = speedAt(entry, "Reading");
  if (!reading) {
    fan.speedRpm = speedAt(entry, "ReadingRPM");
    return;
  }
  const std::string units = textAt(entry, "ReadingUnits");
  const bool inPercent = base::equalIgnoringCase(units, "Percent");
  const bool inRpm = base::equalIgnoringCase(units, "RPM") ||
                     (!inPercent && *reading > kLargestPercentage);
  (inRpm ? fan.speedRpm : fan.speedPercent) = reading;
}

}  // namespace

Mapped<Fan> mapFans(const redfish::Graph& graph, const redfish::Node& node) {
  ReadTally tally;
  std::vector<Fan> rows;
  for (ChassisPart& source :
       chassisParts(graph, node, redfish::coolingSources(node),
                    redfish::kFanSchema, tally)) {
    Fan row;
    row.id = source.part.uri.identity();
    row.name = std::move(source.name);
    if (const json::object* fan = source.part.object) {
      (source.entry ? readEntrySpeed : readResourceSpeed)(*fan, row);
      row.health = healthOfPart(*fan);
      row.state = stateOfPart(*fan);
    }
    rows.push_back(std::move(row));
  }
  return tableOf(std::move(rows), tally);
}

}  // namespace devhealth
