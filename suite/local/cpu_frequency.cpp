#include "suite/local/cpu_frequency.h"

#include <algorithm>
#include <map>
#include <string>

#include "suite/base/numbers.h"
#include "suite/base/time_limit.h"

namespace local {

std::vector<unsigned> packageMaxMhz(const Root& root) {
  constexpr long kHighestKhz = 100'000'000;  // More would be nonsense.
  const std::string cpus = "/sys/devices/system/cpu";
  std::map<long, unsigned> packages;
  for (const auto& cpu : base::numbered(root.list(cpus), "cpu")) {
    base::heedTime();
    const std::string folder = cpus + "/" + cpu.second;
    const auto package = base::parseNumber<long>(
        root.line(folder + "/topology/physical_package_id"));
    if (!package) {
      continue;
    }
    const auto khz = base::parseNumber<long>(
        root.line(folder + "/cpufreq/cpuinfo_max_freq"));
    unsigned& mhz = packages[*package];
    if (khz && *khz > 0 && *khz <= kHighestKhz) {
      mhz = std::max(mhz, static_cast<unsigned>(*khz / 1000));
    }
  }
  std::vector<unsigned> speeds;
  for (const auto& package : packages) {
    if (package.second == 0) {
      return {};
    }
    speeds.push_back(package.second);
  }
  return speeds;
}

}  // namespace local
