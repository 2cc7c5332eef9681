#include "suite/devhealth/inventory/processor_mapping.h"

#include "suite/base/ascii.h"
#include "suite/devhealth/inventory/part_values.h"
#include "suite/devhealth/parts/rows/system_parts.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using report::Processor;

// Whether a family names a line of products rather than one of them:
// "<Maker>(R) <Brand>(R) processor".
bool isGeneric(const std::string& family) {
  const std::string text = base::lowerCase(family);
  const auto holds = [&text](std::string_view word) {
    return text.find(word) != std::string::npos;
  };
  return (holds("processor") || holds("family")) &&
         text.find_first_of("0123456789") == std::string::npos;
}

std::string familyOf(const json::object& processor) {
  std::string family = textAt(processor, "Family");
  if (!family.empty() && !isGeneric(family)) {
    return family;
  }
  const std::string model = textAt(processor, "Model");
  if (!model.empty() || !family.empty()) {
    return model.empty() ? family : model;
  }
  const std::string maker = textAt(processor, "Manufacturer");
  std::string number = textAt(processor, "ProcessorId/EffectiveFamily");
  if (isGeneric(number)) {
    return number;
  }
  if (!maker.empty() && !number.empty()) {
    return maker + " family " + number;
  }
  return textAt(processor, "ProcessorArchitecture");
}

// The first number that is known.
std::optional<double> firstOf(
    std::initializer_list<std::optional<double>> candidates) {
  for (const std::optional<double>& number : candidates) {
    if (number) {
      return number;
    }
  }
  return std::nullopt;
}

// The speed that the processor's metrics state; they are read only for
// processors that do not state it themselves.
std::optional<double> metricsSpeed(const Graph& graph,
                                   const json::object& processor) {
  const json::object* metrics = graph.follow(processor, "Metrics").object;
  return metrics == nullptr ? std::nullopt
                            : positiveAt(*metrics, "OperatingSpeedMHz");
}

// The speed that a maker states in a format of its own.
std::optional<double> makersSpeed(const json::object& processor) {
  for (const json::object* own : makersObjects(processor)) {
    const auto speed = positiveAt(*own, "CurrentClockSpeedMHz");
    if (speed) {
      return speed;
    }
  }
  return std::nullopt;
}

Processor processorOf(const Graph& graph, const NamedPart& part) {
  Processor row;
  row.id = part.part.uri.identity();
  row.name = part.name;
  if (part.part.object == nullptr) {
    return row;
  }
  const json::object& processor = *part.part.object;
  row.model = familyOf(processor);
  row.cores = countAt(processor, "TotalCores");
  row.threads = countAt(processor, "TotalThreads");
  row.speedMhz =
      firstOf({positiveAt(processor, "OperatingSpeedMHz"),
               makersSpeed(processor), metricsSpeed(graph, processor)});
  row.maxSpeedMhz =
      firstOf({positiveAt(processor, "MaxSpeedMHz"),
               positiveAt(processor, "OperatingSpeedRangeMHz/AllowableMax"),
               positiveAt(processor, "SpeedLimitMHz")});
  row.health = healthOfPart(processor);
  row.state = stateOfPart(processor);
  return row;
}

}  // namespace

Mapped<Processor> mapProcessors(const Graph& graph, const redfish::Node& node) {
  std::vector<Processor> rows;
  ReadTally tally;
  for (const NamedPart& part : centralProcessors(graph, node, tally)) {
    rows.push_back(processorOf(graph, part));
  }
  return tableOf(std::move(rows), tally);
}

}  // namespace devhealth
