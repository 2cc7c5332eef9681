#include "suite/local/fans.h"

#include <set>
#include <string>
#include <string_view>

#include "suite/base/numbers.h"
#include "suite/base/time_limit.h"

namespace local {
namespace {

// The numbers of the fans that a chip's folder has a speed of.
std::set<unsigned> fanNumbers(const std::vector<std::string>& names) {
  std::set<unsigned> numbers;
  for (const std::string_view name : names) {
    base::heedTime();
    for (const std::string_view suffix : {"_input", "_target"}) {
      if (name.size() <= suffix.size() ||
          name.substr(name.size() - suffix.size()) != suffix) {
        continue;
      }
      const auto number = base::numberBehind(
          name.substr(0, name.size() - suffix.size()), "fan");
      if (number) {
        numbers.insert(*number);
      }
    }
  }
  return numbers;
}

FanState fanState(const Root& root, const std::string& fan) {
  if (root.line(fan + "_fault") == "1") {
    return FanState::kFault;
  }
  for (const char* alarm : {"_alarm", "_min_alarm", "_max_alarm"}) {
    if (root.line(fan + alarm) == "1") {
      return FanState::kAlarm;
    }
  }
  return FanState::kOk;
}

}  // namespace

std::vector<FanFacts> fanFacts(const Root& root) {
  std::vector<FanFacts> fans;
  const std::string hwmon = "/sys/class/hwmon";
  for (const auto& chip : base::numbered(root.list(hwmon), "hwmon")) {
    std::string folder = hwmon + "/" + chip.second;
    // Old drivers keep their attributes with the device itself.
    if (!root.exists(folder + "/name")) {
      folder += "/device";
    }
    for (const unsigned number : fanNumbers(root.list(folder))) {
      base::heedTime();
      FanFacts fan;
      fan.chip = root.line(folder + "/name");
      fan.input = "fan" + std::to_string(number);
      const std::string path = folder + "/" + fan.input;
      fan.label = root.line(path + "_label");
      fan.targetRpm = base::parseNumber<long>(root.line(path + "_target"));
      fan.measuredRpm = base::parseNumber<long>(root.line(path + "_input"));
      fan.state = fanState(root, path);
      fans.push_back(std::move(fan));
    }
  }
  return fans;
}

}  // namespace local
