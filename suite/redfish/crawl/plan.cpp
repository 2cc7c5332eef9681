#include "suite/redfish/crawl/plan.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "suite/redfish/crawl/selection.h"

namespace redfish {
namespace {

constexpr std::uint32_t kProcessors = kWantProcessors;
constexpr std::uint32_t kFans = kWantFans;
constexpr std::uint32_t kMemory = kWantDimms;
constexpr std::uint32_t kPower = kWantPowers;
constexpr std::uint32_t kPci = kWantPciAdapters;
constexpr std::uint32_t kHealth = kWantHealth;
constexpr std::uint32_t kAll = ~0U;
constexpr std::uint32_t kOfNode = kPlanChassis;
constexpr std::uint32_t kJudged = kPlanHealth;

constexpr std::string_view kNone;

using K = Kind;
using C = Condition;

// The plan of links (DSP0268 resources): from, link, to, wants, roll-up that
// keeps the health walk out, condition.
// clang-format off
constexpr Rule kPlan[] = {
    {K::kRoot, "Systems", K::kSystems, kAll, kNone, C::kAlways},
    {K::kRoot, "Chassis", K::kChassisCollection, kOfNode, kNone, C::kAlways},
    {K::kRoot, "Chassis", K::kChassisCollection, kAll, kNone, C::kPartsUnclear},
    {K::kRoot, "Managers", K::kManagers, kJudged, kNone, C::kAlways},
    {K::kRoot, "ServiceConditions", K::kServiceConditions, kJudged, kNone, C::kAlways},

    {K::kSystems, "Members", K::kSystem, kAll, kNone, C::kAlways},
    {K::kChassisCollection, "Members", K::kChassis, kOfNode, kNone, C::kAlways},
    {K::kChassisCollection, "Members", K::kChassis, kAll, kNone, C::kPartsUnclear},
    {K::kManagers, "Members", K::kManager, kJudged, kNone, C::kAlways},

    {K::kSystem, "Links/Chassis", K::kChassis, kOfNode, kNone, C::kAlways},
    {K::kSystem, "Links/ManagedBy", K::kManager, kJudged, kNone, C::kAlways},
    {K::kSystem, "Processors", K::kProcessors, kProcessors | kPci | kHealth, "ProcessorSummary/Status", C::kAlways},
    {K::kSystem, "Memory", K::kMemoryCollection, kMemory | kHealth, "MemorySummary/Status", C::kAlways},
    {K::kSystem, "Storage", K::kStorageCollection, kPci | kHealth, kNone, C::kAlways},
    {K::kSystem, "SimpleStorage", K::kSimpleStorages, kHealth, kNone, C::kNoStorage},
    {K::kSystem, "PCIeDevices", K::kPcieDevice, kPci | kHealth, kNone, C::kAfterChassisDevices},
    {K::kSystem, "NetworkInterfaces", K::kNetworkInterfaces, kPci | kHealth, kNone, C::kNoChassisAdapters},
    {K::kSystem, "Links/CooledBy", K::kCoolingSource, kFans | kHealth, kNone, C::kAlways},
    {K::kSystem, "Links/PoweredBy", K::kPowerSource, kPower | kHealth, kNone, C::kAlways},

    {K::kChassis, "Links/Contains", K::kChassis, kOfNode, kNone, C::kAlways},
    {K::kChassis, "ThermalSubsystem", K::kThermalSubsystem, kFans | kHealth, kNone, C::kAlways},
    {K::kChassis, "Thermal", K::kThermal, kFans | kHealth, kNone, C::kNoNewFans},
    {K::kChassis, "PowerSubsystem", K::kPowerSubsystem, kPower | kHealth, kNone, C::kAlways},
    {K::kChassis, "Power", K::kPower, kPower | kHealth, kNone, C::kNoNewSupplies},
    {K::kChassis, "PCIeDevices", K::kPcieDevices, kPci | kHealth, kNone, C::kNoSystemDevices},
    {K::kChassis, "Links/PCIeDevices", K::kPcieDevice, kPci | kHealth, kNone, C::kNoChassisDevices},
    {K::kChassis, "Oem/*/Links/Devices", K::kDeviceList, kPci | kHealth, kNone, C::kNoReadableDevices},
    {K::kChassis, "NetworkAdapters", K::kNetworkAdapters, kPci | kHealth, kNone, C::kAlways},
    {K::kChassis, "PCIeSlots", K::kPcieSlots, kPci, kNone, C::kAlways},
    {K::kChassis, "Links/CooledBy", K::kCoolingSource, kFans | kHealth, kNone, C::kAlways},
    {K::kChassis, "Links/Fans", K::kFan, kFans | kHealth, kNone, C::kAlways},
    {K::kChassis, "Links/PoweredBy", K::kPowerSource, kPower | kHealth, kNone, C::kAlways},
    {K::kChassis, "Links/PowerSupplies", K::kPowerSupply, kPower | kHealth, kNone, C::kAlways},
    {K::kChassis, "Links/ContainedBy", K::kCoolingSource, kFans, kNone, C::kNoFansSoFar},
    {K::kChassis, "Links/ContainedBy", K::kPowerSource, kPower, kNone, C::kNoPowerSoFar},

    {K::kProcessors, "Members", K::kProcessor, kProcessors | kPci | kHealth, kNone, C::kAlways},
    {K::kProcessor, "Metrics", K::kProcessorMetrics, kProcessors, kNone, C::kNoSpeed},
    {K::kMemoryCollection, "Members", K::kMemory, kMemory | kHealth, kNone, C::kAlways},

    {K::kThermalSubsystem, "Fans", K::kFans, kFans | kHealth, "Status", C::kAlways},
    {K::kFans, "Members", K::kFan, kFans | kHealth, kNone, C::kAlways},

    {K::kPowerSubsystem, "PowerSupplies", K::kPowerSupplies, kPower | kHealth, kNone, C::kAlways},
    {K::kPowerSubsystem, "Batteries", K::kBatteries, kHealth, "Status", C::kAlways},
    {K::kPowerSupplies, "Members", K::kPowerSupply, kPower | kHealth, kNone, C::kAlways},
    {K::kBatteries, "Members", K::kBattery, kHealth, kNone, C::kAlways},

    {K::kPcieDevices, "Members", K::kPcieDevice, kPci | kHealth, kNone, C::kAlways},
    {K::kDeviceList, "Members", K::kListedDevice, kPci | kHealth, kNone, C::kAlways},
    {K::kNetworkAdapters, "Members", K::kNetworkAdapter, kPci | kHealth, kNone, C::kAlways},
    {K::kNetworkInterfaces, "Members", K::kNetworkInterface, kPci | kHealth, kNone, C::kAlways},
    {K::kNetworkInterface, "Links/NetworkAdapter", K::kNetworkAdapter, kPci | kHealth, kNone, C::kAlways},
    {K::kNetworkInterface, "NetworkAdapter", K::kNetworkAdapter, kPci | kHealth, kNone, C::kAlways},

    {K::kStorageCollection, "Members", K::kStorage, kPci | kHealth, kNone, C::kAlways},
    {K::kStorage, "Controllers", K::kStorageControllers, kPci | kHealth, "Status", C::kNoControllerArray},
    {K::kStorage, "Drives", K::kDrive, kHealth, "Status", C::kAlways},
    {K::kStorage, "Volumes", K::kVolumes, kHealth, "Status", C::kAlways},
    {K::kStorageControllers, "Members", K::kStorageController, kPci | kHealth, kNone, C::kAlways},
    {K::kVolumes, "Members", K::kVolume, kHealth, kNone, C::kAlways},
    {K::kSimpleStorages, "Members", K::kSimpleStorage, kHealth, kNone, C::kAlways},

    // A source that turns out to be a chassis is read like one.
    {K::kCoolingSource, "ThermalSubsystem", K::kThermalSubsystem, kFans | kHealth, kNone, C::kAlways},
    {K::kCoolingSource, "Thermal", K::kThermal, kFans | kHealth, kNone, C::kNoNewFans},
    {K::kCoolingSource, "Links/ContainedBy", K::kCoolingSource, kFans, kNone, C::kNoFansSoFar},
    {K::kPowerSource, "PowerSubsystem", K::kPowerSubsystem, kPower | kHealth, kNone, C::kAlways},
    {K::kPowerSource, "Power", K::kPower, kPower | kHealth, kNone, C::kNoNewSupplies},
    {K::kPowerSource, "Links/ContainedBy", K::kPowerSource, kPower, kNone, C::kNoPowerSoFar},
};
// clang-format on

using PlanTable = std::array<std::vector<Rule>, kKindCount>;

PlanTable byKind() {
  PlanTable table;
  for (const Rule& rule : kPlan) {
    table[index(rule.from)].push_back(rule);
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
  constexpr std::uint32_t kOfChassis =
      kWantSystem | kFans | kPower | kPci | kHealth;
  std::uint32_t bits = wants & ~kWantThorough;
  if ((wants & kOfChassis) != 0) {
    bits |= kPlanChassis;
  }
  if ((wants & kHealth) != 0) {
    bits |= kPlanHealth;
  }
  return bits;
}

bool isStructural(const Rule& rule) {
  return (rule.wants & (kPlanChassis | kPlanHealth)) != 0;
}

const std::vector<Rule>& rulesFrom(Kind kind) {
  static const PlanTable kTable = byKind();
  return kTable[index(kind)];
}

int heightOf(Kind kind) {
  static const auto kHeights = [] {
    std::array<int, kKindCount> all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
      all[i] = height(static_cast<Kind>(i));
    }
    return all;
  }();
  return kHeights[index(kind)];
}

bool isCollection(Kind kind) {
  const auto& rules = rulesFrom(kind);
  return !rules.empty() &&
         std::all_of(rules.begin(), rules.end(),
                     [](const Rule& rule) { return rule.path == "Members"; });
}

}  // namespace redfish
