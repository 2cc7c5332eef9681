#include "suite/devhealth/health_reader.h"

#include <string>
#include <unordered_set>
#include <utility>

#include "suite/devhealth/health/alerts.h"

namespace devhealth {
namespace {

// Most readings of one call. Pointers, sensors and the three steps to a
// registry need five after the walk.
constexpr int kMaxRounds = 8;

// Adds what a reading wants and did not want before. Returns false if there is
// nothing new: another reading would tell the same.
bool extend(redfish::Selection& selection, HealthReading& reading,
            std::unordered_set<std::string>& asked) {
  bool extended = false;
  selection.extras.clear();
  for (redfish::Uri& link : reading.wanted) {
    if (!asked.insert(link.document()).second) {
      continue;
    }
    selection.extras.push_back(std::move(link));
    extended = true;
  }
  for (const std::string& holder : reading.unexplained) {
    extended = selection.unexplained.insert(holder).second || extended;
  }
  return extended;
}

}  // namespace

std::optional<Unread> readHealth(TargetReader& reader,
                                 std::vector<report::Event>& events) {
  AlertOptions options;
  redfish::Selection selection;
  selection.wants = redfish::kWantHealth;
  std::unordered_set<std::string> asked;
  HealthReading reading;
  for (int round = 0; round < kMaxRounds; ++round) {
    if (auto unread = reader.read(selection)) {
      return unread;
    }
    options.thorough = reader.thorough();
    options.unexplained = selection.unexplained;
    auto late = reader.work([&]() -> std::optional<Unread> {
      reading =
          readEvents(reader.graph(), reader.topology(), reader.node(), options);
      return std::nullopt;
    });
    if (late) {
      return late;
    }
    if (reading.failure || !extend(selection, reading, asked)) {
      break;
    }
  }
  if (reading.failure) {
    return reader.fail(std::move(*reading.failure), Extent::kItem);
  }
  events = std::move(reading.events);
  if (reading.gap) {
    return reader.fail(std::move(*reading.gap), Extent::kParts);
  }
  return std::nullopt;
}

}  // namespace devhealth
