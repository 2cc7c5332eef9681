#include "suite/devhealth/inventory/processor_mapping.h"

#include "suite/devhealth/parts/health_text.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using Tarvex::DeviceHealth::Processor;

bool isCpu(const json::object& processor) {
  const std::string_view type = redfish::stringAt(processor, "ProcessorType");
  return type.empty() || type == "CPU";
}

std::string familyOf(const json::object& processor) {
  std::string family = firstTextAt(processor, {"Family", "Model"});
  if (!family.empty()) {
    return family;
  }
  const std::string maker = textAt(processor, "Manufacturer");
  const std::string number = textAt(processor, "ProcessorId/EffectiveFamily");
  if (!maker.empty() && !number.empty()) {
    return maker + " family " + number;
  }
  return textAt(processor, "ProcessorArchitecture");
}

// The first of some numbers, as text without a unit.
std::string megahertz(std::initializer_list<std::optional<double>> candidates) {
  for (const std::optional<double>& number : candidates) {
    if (number) {
      return formatNumber(*number);
    }
  }
  return {};
}

// The speed that the processor's metrics state; they are read only for
// processors that do not state it themselves.
std::optional<double> metricsSpeed(const Graph& graph,
                                   const json::object& processor) {
  const json::object* metrics = graph.follow(processor, "Metrics").object;
  return metrics == nullptr ? std::nullopt
                            : positiveAt(*metrics, "OperatingSpeedMHz");
}

Processor processorOf(const Graph& graph, const Part& part,
                      const NameCounts& names) {
  Processor row;
  if (part.object == nullptr) {
    row.name = recordText(part.uri.lastSegment());
    row.healthState = healthWord(redfish::Health::kUnknown);
    return row;
  }
  const json::object& processor = *part.object;
  row.name = displayName(processor, part.uri, names, "Socket");
  row.family = familyOf(processor);
  row.currentClockSpeed = megahertz({positiveAt(processor, "OperatingSpeedMHz"),
                                     metricsSpeed(graph, processor)});
  row.maxClockSpeed =
      megahertz({positiveAt(processor, "MaxSpeedMHz"),
                 positiveAt(processor, "OperatingSpeedRangeMHz/AllowableMax"),
                 positiveAt(processor, "SpeedLimitMHz")});
  row.healthState = healthState(processor);
  return row;
}

}  // namespace

Mapped<Processor> mapProcessors(const Graph& graph, const redfish::Node& node) {
  std::vector<Processor> rows;
  ReadTally tally;
  const LinkedList processors =
      membersAt(graph, node.system->body, "Processors");
  if (processors.failure) {
    tally.fail(*processors.failure);
  }
  for (const Part& part : processors.list.parts()) {
    if (part.object == nullptr) {
      tally.unreadable(part);
    } else {
      tally.read();
      if (redfish::isAbsent(*part.object) || !isCpu(*part.object)) {
        continue;
      }
    }
    rows.push_back(processorOf(graph, part, processors.list.names()));
  }
  return tableOf(std::move(rows), tally);
}

}  // namespace devhealth
