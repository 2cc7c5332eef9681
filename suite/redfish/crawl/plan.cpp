#include "suite/redfish/crawl/plan.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "suite/redfish/crawl/selection.h"

namespace redfish {
namespace {

constexpr std::uint32_t kCpu = kWantProcessors;
constexpr std::uint32_t kFan = kWantFans;
constexpr std::uint32_t kMem = kWantDimms;
constexpr std::uint32_t kPow = kWantPowers;
constexpr std::uint32_t kPci = kWantPciAdapters;
constexpr std::uint32_t kHlt = kWantHealth;
constexpr std::uint32_t kAll = ~0U;
constexpr std::uint32_t kBox = kPlanChassis;
constexpr std::uint32_t kTop = kPlanHealth;

constexpr std::string_view kNone;

using K = Kind;
using C = Condition;

// The plan of links (DSP0268 resources): from, link, to, wants, roll-up that
// keeps the health walk out, condition.
// clang-format off
constexpr Rule kPlan[] = {
    {K::kRoot, "Systems", K::kSystems, kAll, kNone, C::kAlways},
    {K::kRoot, "Chassis", K::kChassisCollection, kBox, kNone, C::kAlways},
    {K::kRoot, "Managers", K::kManagers, kTop, kNone, C::kAlways},
    {K::kRoot, "ServiceConditions", K::kServiceConditions, kTop, kNone, C::kAlways},

    {K::kSystems, "Members", K::kSystem, kAll, kNone, C::kAlways},
    {K::kChassisCollection, "Members", K::kChassis, kBox, kNone, C::kAlways},
    {K::kManagers, "Members", K::kManager, kTop, kNone, C::kAlways},

    {K::kSystem, "Links/Chassis", K::kChassis, kBox, kNone, C::kAlways},
    {K::kSystem, "Links/ManagedBy", K::kManager, kTop, kNone, C::kAlways},
    {K::kSystem, "Processors", K::kProcessors, kCpu | kHlt, "ProcessorSummary/Status", C::kAlways},
    {K::kSystem, "Memory", K::kMemoryCollection, kMem | kHlt, "MemorySummary/Status", C::kAlways},
    {K::kSystem, "Storage", K::kStorageCollection, kHlt, kNone, C::kAlways},
    {K::kSystem, "PCIeDevices", K::kPcieDevice, kPci | kHlt, kNone, C::kAfterChassisDevices},
    {K::kSystem, "Links/CooledBy", K::kCoolingSource, kFan | kHlt, kNone, C::kAlways},
    {K::kSystem, "Links/PoweredBy", K::kPowerSource, kPow | kHlt, kNone, C::kAlways},

    {K::kChassis, "Links/Contains", K::kChassis, kBox, kNone, C::kAlways},
    {K::kChassis, "ThermalSubsystem", K::kThermalSubsystem, kFan | kHlt, kNone, C::kAlways},
    {K::kChassis, "Thermal", K::kThermal, kFan | kHlt, kNone, C::kNoNewFans},
    {K::kChassis, "PowerSubsystem", K::kPowerSubsystem, kPow | kHlt, kNone, C::kAlways},
    {K::kChassis, "Power", K::kPower, kPow | kHlt, kNone, C::kNoNewSupplies},
    {K::kChassis, "PCIeDevices", K::kPcieDevices, kPci | kHlt, kNone, C::kNoSystemDevices},
    {K::kChassis, "Links/PCIeDevices", K::kPcieDevice, kPci | kHlt, kNone, C::kNoChassisDevices},
    {K::kChassis, "NetworkAdapters", K::kNetworkAdapters, kPci | kHlt, kNone, C::kAlways},
    {K::kChassis, "PCIeSlots", K::kPcieSlots, kPci, kNone, C::kAlways},
    {K::kChassis, "Links/CooledBy", K::kCoolingSource, kFan | kHlt, kNone, C::kAlways},
    {K::kChassis, "Links/Fans", K::kFan, kFan | kHlt, kNone, C::kAlways},
    {K::kChassis, "Links/PoweredBy", K::kPowerSource, kPow | kHlt, kNone, C::kAlways},
    {K::kChassis, "Links/PowerSupplies", K::kPowerSupply, kPow | kHlt, kNone, C::kAlways},
    {K::kChassis, "Links/ContainedBy", K::kCoolingSource, kFan, kNone, C::kNoFansSoFar},
    {K::kChassis, "Links/ContainedBy", K::kPowerSource, kPow, kNone, C::kNoPowerSoFar},

    {K::kProcessors, "Members", K::kProcessor, kCpu | kHlt, kNone, C::kAlways},
    {K::kProcessor, "Metrics", K::kProcessorMetrics, kCpu, kNone, C::kNoSpeed},
    {K::kMemoryCollection, "Members", K::kMemory, kMem | kHlt, kNone, C::kAlways},

    {K::kThermalSubsystem, "Fans", K::kFans, kFan | kHlt, "Status", C::kAlways},
    {K::kFans, "Members", K::kFan, kFan | kHlt, kNone, C::kAlways},

    {K::kPowerSubsystem, "PowerSupplies", K::kPowerSupplies, kPow | kHlt, kNone, C::kAlways},
    {K::kPowerSubsystem, "Batteries", K::kBatteries, kHlt, "Status", C::kAlways},
    {K::kPowerSupplies, "Members", K::kPowerSupply, kPow | kHlt, kNone, C::kAlways},
    {K::kBatteries, "Members", K::kBattery, kHlt, kNone, C::kAlways},

    {K::kPcieDevices, "Members", K::kPcieDevice, kPci | kHlt, kNone, C::kAlways},
    {K::kNetworkAdapters, "Members", K::kNetworkAdapter, kPci | kHlt, kNone, C::kAlways},

    {K::kStorageCollection, "Members", K::kStorage, kHlt, kNone, C::kAlways},
    {K::kStorage, "Controllers", K::kStorageControllers, kHlt, "Status", C::kAlways},
    {K::kStorage, "Drives", K::kDrive, kHlt, "Status", C::kAlways},
    {K::kStorage, "Volumes", K::kVolumes, kHlt, "Status", C::kAlways},
    {K::kStorageControllers, "Members", K::kStorageController, kHlt, kNone, C::kAlways},
    {K::kVolumes, "Members", K::kVolume, kHlt, kNone, C::kAlways},

    // A source that turns out to be a chassis is read like one.
    {K::kCoolingSource, "ThermalSubsystem", K::kThermalSubsystem, kFan | kHlt, kNone, C::kAlways},
    {K::kCoolingSource, "Thermal", K::kThermal, kFan | kHlt, kNone, C::kNoNewFans},
    {K::kCoolingSource, "Links/ContainedBy", K::kCoolingSource, kFan, kNone, C::kNoFansSoFar},
    {K::kPowerSource, "PowerSubsystem", K::kPowerSubsystem, kPow | kHlt, kNone, C::kAlways},
    {K::kPowerSource, "Power", K::kPower, kPow | kHlt, kNone, C::kNoNewSupplies},
    {K::kPowerSource, "Links/ContainedBy", K::kPowerSource, kPow, kNone, C::kNoPowerSoFar},
};
// clang-format on

using PlanTable = std::array<std::vector<Rule>, kKindCount>;

PlanTable byKind() {
  PlanTable table;
  for (const Rule& rule : kPlan) {
    table[static_cast<std::size_t>(rule.from)].push_back(rule);
  }
  return table;
}

int height(Kind kind) {
  int tallest = 0;
  for (const Rule& rule : rulesFrom(kind)) {
    if (rule.to != kind) {
      tallest = std::max(tallest, 1 + height(rule.to));
    }
  }
  return tallest;
}

}  // namespace

std::uint32_t planBits(std::uint32_t wants) {
  constexpr std::uint32_t kOfChassis = kWantSystem | kFan | kPow | kPci | kHlt;
  std::uint32_t bits = wants & ~kWantThorough;
  if ((wants & kOfChassis) != 0) {
    bits |= kPlanChassis;
  }
  if ((wants & kHlt) != 0) {
    bits |= kPlanHealth;
  }
  return bits;
}

const std::vector<Rule>& rulesFrom(Kind kind) {
  static const PlanTable table = byKind();
  return table[static_cast<std::size_t>(kind)];
}

int heightOf(Kind kind) {
  static const auto heights = [] {
    std::array<int, kKindCount> all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
      all[i] = height(static_cast<Kind>(i));
    }
    return all;
  }();
  return heights[static_cast<std::size_t>(kind)];
}

bool isCollection(Kind kind) {
  const auto& rules = rulesFrom(kind);
  return rules.size() == 1 && rules.front().path == "Members";
}

}  // namespace redfish
