#include "suite/devhealth/inventory/fan_mapping.h"

#include "suite/base/ascii.h"
#include "suite/devhealth/parts/health_text.h"
#include "suite/devhealth/parts/rows/chassis_parts.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using Tarvex::DeviceHealth::Fan;

// A speed as served; a negative one means that it is not known, 0 that the
// fan stands still.
std::optional<double> speedAt(const json::object& fan, std::string_view path) {
  const std::optional<double> speed = numberAt(fan, path);
  return speed && *speed >= 0 ? speed : std::nullopt;
}

// Speed of a Fan resource. The excerpt of its sensor stands in the resource;
// some services give the bare percentage instead.
std::string speedOfResource(const json::object& fan) {
  if (const auto speed = speedAt(fan, "SpeedPercent/SpeedRPM")) {
    return quantity(speed, "RPM");
  }
  if (const auto percent = speedAt(fan, "SpeedPercent/Reading")) {
    return quantity(percent, "%");
  }
  return quantity(speedAt(fan, "SpeedPercent"), "%");
}

// Speed of an entry of the older document.
std::string speedOfEntry(const json::object& fan) {
  constexpr double kLargestPercentage = 100;
  const auto reading = speedAt(fan, "Reading");
  if (!reading) {
    return quantity(speedAt(fan, "ReadingRPM"), "RPM");
  }
  const std::string units = textAt(fan, "ReadingUnits");
  if (base::equalIgnoringCase(units, "RPM")) {
    return quantity(reading, "RPM");
  }
  if (base::equalIgnoringCase(units, "Percent")) {
    return quantity(reading, "%");
  }
  return quantity(reading, *reading > kLargestPercentage ? "RPM" : "%");
}

}  // namespace

Mapped<Fan> mapFans(const redfish::Graph& graph, const redfish::Node& node) {
  ReadTally tally;
  std::vector<Fan> rows;
  for (ChassisPart& source :
       chassisParts(graph, node, redfish::coolingSources(node),
                    redfish::kFanSchema, tally)) {
    Fan row;
    row.elementName = std::move(source.name);
    row.healthState = healthWord(redfish::Health::kUnknown);
    if (const json::object* fan = source.part.object) {
      row.desiredSpeed =
          source.entry ? speedOfEntry(*fan) : speedOfResource(*fan);
      row.healthState = healthState(*fan);
    }
    rows.push_back(std::move(row));
  }
  return tableOf(std::move(rows), tally);
}

}  // namespace devhealth
