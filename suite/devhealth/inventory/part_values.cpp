#include "suite/devhealth/inventory/part_values.h"

#include <cmath>
#include <utility>

#include "suite/devhealth/parts/health_text.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

using report::PowerState;
using report::State;

// Texts of DSP0268 and what they stand for.
constexpr std::pair<std::string_view, State> kStates[] = {
    {"Enabled", State::kEnabled},
    {"Disabled", State::kDisabled},
    {"StandbyOffline", State::kStandbyOffline},
    {"StandbySpare", State::kStandbySpare},
    {"InTest", State::kInTest},
    {"Starting", State::kStarting},
    {"Absent", State::kAbsent},
    {"UnavailableOffline", State::kUnavailableOffline},
    {"Deferring", State::kDeferring},
    {"Quiesced", State::kQuiesced},
    {"Updating", State::kUpdating},
    {"Qualified", State::kQualified},
    {"Degraded", State::kDegraded},
};

constexpr std::pair<std::string_view, PowerState> kPowerStates[] = {
    {"On", PowerState::kOn},
    {"Off", PowerState::kOff},
    {"PoweringOn", PowerState::kPoweringOn},
    {"PoweringOff", PowerState::kPoweringOff},
    {"Paused", PowerState::kPaused},
};

template <typename Value, std::size_t Count>
Value valueOf(const std::pair<std::string_view, Value> (&known)[Count],
              std::string_view text) {
  for (const auto& [name, value] : known) {
    if (name == text) {
      return value;
    }
  }
  return Value::kUnknown;
}

}  // namespace

report::Health reportHealth(redfish::Health health) {
  switch (health) {
    case redfish::Health::kOk:
      return report::Health::kNormal;
    case redfish::Health::kWarning:
      return report::Health::kWarning;
    case redfish::Health::kCritical:
      return report::Health::kError;
    case redfish::Health::kUnknown:
      break;
  }
  return report::Health::kUnknown;
}

report::Health healthOfPart(const redfish::json::object& part) {
  return reportHealth(partHealth(part));
}

State stateOfPart(const redfish::json::object& part) {
  return valueOf(kStates, redfish::stringAt(part, "Status/State"));
}

PowerState powerStateOf(const redfish::json::object& system) {
  return valueOf(kPowerStates, redfish::stringAt(system, "PowerState"));
}

std::optional<std::int64_t> countAt(const redfish::json::object& object,
                                    std::string_view path) {
  const std::optional<double> number = positiveAt(object, path);
  if (!number || std::floor(*number) != *number) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(*number);
}

}  // namespace devhealth
