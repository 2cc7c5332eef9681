#include "export/prometheus_text.h"

#include <prometheus/metric_family.h>
#include <prometheus/text_serializer.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <iomanip>
#include <iterator>
#include <locale>
#include <map>
#include <optional>
#include <sstream>
#include <string_view>
#include <vector>

#include "suite/report/words.h"

namespace exporting {
namespace {

using Labels = std::vector<prometheus::ClientMetric::Label>;

enum Metric : std::size_t {
  kTargetUp,
  kReadComplete,
  kReadTimestamp,
  kReadDuration,
  kTargetInfo,
  kHealthStatus,
  kActiveEvents,
  kComponentHealth,
  kFanSpeedRpm,
  kFanSpeedPercent,
  kPowerSupplyCapacity,
  kMemoryModuleCapacity,
  kMemorySlots
};

struct MetricText {
  const char* name;
  const char* help;
};

// In the order of `Metric`.
// clang-format off
constexpr MetricText kMetricTexts[] = {
    {"brivel_target_up", "Whether anything could be read of the target."},
    {"brivel_read_complete", "Whether all that was asked for could be read."},
    {"brivel_read_timestamp_seconds", "When the reading ended."},
    {"brivel_read_duration_seconds", "How long the reading took."},
    {"brivel_target_info", "What the target is, in labels; always 1."},
    {"brivel_health_status",
     "Health of an area: 0 normal, 1 warning, 2 error, 3 unknown."},
    {"brivel_active_events", "Number of active events."},
    {"brivel_component_health",
     "Health of a part: 0 normal, 1 warning, 2 error, 3 unknown."},
    {"brivel_fan_speed_rpm", "Speed of a fan in revolutions per minute."},
    {"brivel_fan_speed_percent", "Speed of a fan in percent of its highest."},
    {"brivel_power_supply_capacity_watts", "Rated output of a power supply."},
    {"brivel_memory_module_capacity_bytes", "Capacity of a memory module."},
    {"brivel_memory_slots", "Number of places for memory modules, by state."},
};
// clang-format on

// Health as monitoring plug-ins count it.
double numberOf(report::Health health) {
  switch (health) {
    case report::Health::kNormal:
      return 0;
    case report::Health::kWarning:
      return 1;
    case report::Health::kError:
      return 2;
    case report::Health::kUnknown:
      break;
  }
  return 3;
}

// Seconds since 1970 of a time in UTC, as reports have it.
std::optional<double> secondsOf(const std::string& time) {
  std::istringstream text(time);
  text.imbue(std::locale::classic());
  std::tm fields = {};
  text >> std::get_time(&fields, "%Y-%m-%dT%H:%M:%SZ");
  if (text.fail() || text.peek() != std::istringstream::traits_type::eof()) {
    return std::nullopt;
  }
  return static_cast<double>(timegm(&fields));
}

prometheus::MetricFamily familyOf(std::size_t metric) {
  prometheus::MetricFamily family;
  family.name = kMetricTexts[metric].name;
  family.help = kMetricTexts[metric].help;
  family.type = prometheus::MetricType::Gauge;
  return family;
}

std::string serialized(const prometheus::MetricFamily& family) {
  std::ostringstream text;
  prometheus::TextSerializer().Serialize(text, {family});
  return text.str();
}

// The samples of one report, by metric. A sample of the library takes some ten
// times its text, so they become text by and by.
class Samples {
 public:
  explicit Samples(const report::Target& target)
      : labels_{{"target", target.name},
                {"node", std::to_string(target.node)}} {
    for (std::size_t i = 0; i < std::size(kMetricTexts); ++i) {
      families_.push_back(familyOf(i));
    }
    texts_.resize(families_.size());
  }

  void add(Metric metric, double value, const Labels& labels = {}) {
    if (!std::isfinite(value)) {
      return;
    }
    prometheus::ClientMetric sample;
    sample.label = labels_;
    sample.label.insert(sample.label.end(), labels.begin(), labels.end());
    sample.gauge.value = value;
    families_[metric].metric.push_back(std::move(sample));
    constexpr std::size_t kMostSamples = 1000;
    if (families_[metric].metric.size() == kMostSamples) {
      writeOut(metric);
    }
  }

  void add(Metric metric, const std::optional<double>& value,
           const Labels& labels = {}) {
    if (value) {
      add(metric, *value, labels);
    }
  }

  // A metric's samples as text, without the lines that describe the metric.
  std::string take(std::size_t metric) {
    if (!families_[metric].metric.empty()) {
      writeOut(metric);
    }
    return std::move(texts_[metric]);
  }

 private:
  void writeOut(std::size_t metric) {
    const std::size_t description = serialized(familyOf(metric)).size();
    texts_[metric] += serialized(families_[metric]).substr(description);
    families_[metric].metric.clear();
  }

  Labels labels_;
  std::vector<prometheus::MetricFamily> families_;
  std::vector<std::string> texts_;  // By metric.
};

// The labels of the parts of one list. Services may give two parts one path;
// the further ones are numbered.
class PartLabels {
 public:
  Labels of(const std::string& id, const std::string& name) {
    std::string label = id;
    while (!used_.insert(label).second) {
      label = id + "#" + std::to_string(++repeats_[id] + 1);
    }
    return {{"id", label}, {"name", name}};
  }

 private:
  std::set<std::string> used_;
  std::map<std::string, int> repeats_;
};

Labels healthLabels(std::string_view kind, Labels part) {
  part.insert(part.begin(), {"kind", std::string(kind)});
  return part;
}

void addInfo(const report::ServerReport& report, Samples& samples) {
  const report::System& system = report.system;
  samples.add(
      kTargetInfo, 1,
      {{"address", report.target.address},
       {"via", std::string(wordFor(report.target.via))},
       {"name", system.name},
       {"type_model", system.typeModel},
       {"serial_number", system.serialNumber},
       {"uuid", system.uuid},
       {"firmware_version", system.firmwareVersion},
       {"controller_firmware_version", system.controllerFirmwareVersion}});
}

void addHealth(const report::ServerReport& report, Samples& samples) {
  const auto& failures = report.read.failures;
  const bool failed = std::any_of(failures.begin(), failures.end(),
                                  [](const report::ReadFailure& failure) {
                                    return failure.what == "health";
                                  });
  if (report.health.events || failed) {
    for (std::size_t i = 0; i < report::kCategories; ++i) {
      samples.add(kHealthStatus, numberOf(report.health.categories[i]),
                  {{"category", std::string(report::kCategoryWords[i])}});
    }
  }
  if (!report.health.events) {
    return;
  }
  const report::Health severities[] = {report::Health::kWarning,
                                       report::Health::kError};
  std::map<std::pair<report::Category, report::Health>, int> counts;
  for (const report::Event& event : *report.health.events) {
    ++counts[{event.category, event.severity}];
  }
  for (std::size_t i = 0; i < report::kCategories; ++i) {
    for (const report::Health severity : severities) {
      const auto found =
          counts.find({static_cast<report::Category>(i), severity});
      samples.add(kActiveEvents, found == counts.end() ? 0 : found->second,
                  {{"category", std::string(report::kCategoryWords[i])},
                   {"severity", std::string(wordFor(severity))}});
    }
  }
}

// Adds the health of each part of a list, and what `visit` adds of it.
template <typename Part, typename Visit>
void addParts(std::string_view kind,
              const std::optional<std::vector<Part>>& parts,
              std::string Part::*name, Samples& samples, Visit&& visit) {
  if (!parts) {
    return;
  }
  PartLabels labels;
  for (const Part& part : *parts) {
    const Labels own = labels.of(part.id, part.*name);
    samples.add(kComponentHealth, numberOf(part.health),
                healthLabels(kind, own));
    visit(part, own);
  }
}

void addAllParts(const report::ServerReport& report, Samples& samples) {
  const auto nothingElse = [](const auto&, const Labels&) {};
  addParts("processor", report.processors, &report::Processor::name, samples,
           nothingElse);
  addParts("memory_module", report.memory, &report::MemoryModule::slot, samples,
           [&](const report::MemoryModule& part, const Labels& labels) {
             constexpr double kBytesPerMib = 1024.0 * 1024.0;
             if (part.capacityMib) {
               samples.add(
                   kMemoryModuleCapacity,
                   static_cast<double>(*part.capacityMib) * kBytesPerMib,
                   labels);
             }
           });
  addParts("fan", report.fans, &report::Fan::name, samples,
           [&](const report::Fan& part, const Labels& labels) {
             samples.add(kFanSpeedRpm, part.speedRpm, labels);
             samples.add(kFanSpeedPercent, part.speedPercent, labels);
           });
  addParts("power_supply", report.powerSupplies, &report::PowerSupply::name,
           samples, [&](const report::PowerSupply& part, const Labels& labels) {
             samples.add(kPowerSupplyCapacity, part.capacityWatts, labels);
           });
  addParts("pci_adapter", report.pciAdapters, &report::PciAdapter::name,
           samples, nothingElse);
}

void addMemorySlots(const report::MemorySlots& slots, Samples& samples) {
  if (slots.populated) {
    samples.add(kMemorySlots, static_cast<double>(*slots.populated),
                {{"state", "populated"}});
  }
  if (slots.populated && slots.total && *slots.total >= *slots.populated) {
    samples.add(kMemorySlots,
                static_cast<double>(*slots.total - *slots.populated),
                {{"state", "empty"}});
  }
}

}  // namespace

void PrometheusText::add(const report::ServerReport& report) {
  static_assert(std::size(kMetricTexts) == kMetrics);
  if (!nodes_.insert({report.target.name, report.target.node}).second) {
    return;
  }
  Samples samples(report.target);
  const report::ReadStatus status = report.read.status;
  const bool up = status != report::ReadStatus::kFailed;
  samples.add(kTargetUp, up ? 1 : 0);
  samples.add(kReadComplete, status == report::ReadStatus::kComplete ? 1 : 0);
  samples.add(kReadTimestamp, secondsOf(report.read.time));
  samples.add(kReadDuration, report.read.seconds);
  if (up) {
    addInfo(report, samples);
    addHealth(report, samples);
    addAllParts(report, samples);
    addMemorySlots(report.memorySlots, samples);
  }
  for (std::size_t i = 0; i < kMetrics; ++i) {
    samples_[i] += samples.take(i);
  }
}

std::string PrometheusText::text() const {
  std::string all;
  for (std::size_t i = 0; i < kMetrics; ++i) {
    if (!samples_[i].empty()) {
      all += serialized(familyOf(i)) + samples_[i];
    }
  }
  return all;
}

}  // namespace exporting
