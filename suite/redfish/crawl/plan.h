#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace redfish {

/// The part that a resource plays in the crawl. It follows from the link that
/// led to it, not from what the resource says of itself.
enum class Kind : std::uint8_t {
  kRoot,
  kSystems,
  kSystem,
  kChassisCollection,
  kChassis,
  kManagers,
  kManager,
  kServiceConditions,
  kProcessors,
  kProcessor,
  kProcessorMetrics,
  kMemoryCollection,
  kMemory,
  kThermalSubsystem,
  kFans,
  kFan,
  kThermal,
  kPowerSubsystem,
  kPowerSupplies,
  kPowerSupply,
  kBatteries,
  kBattery,
  kPower,
  kPcieDevices,
  kPcieDevice,
  kPcieSlots,
  kNetworkAdapters,
  kNetworkAdapter,
  kStorageCollection,
  kStorage,
  kStorageControllers,
  kStorageController,
  kVolumes,
  kVolume,
  kDrive,
  kCoolingSource,  ///< What a CooledBy link names, or an enclosing chassis.
  kPowerSource,    ///< What a PoweredBy link names, or an enclosing chassis.
  kExtra           ///< Asked for by its link alone.
};

/// Links that are followed to find out what belongs to a node, or whether the
/// service's list of conditions can be trusted; further bits beside those of
/// `Want`.
constexpr std::uint32_t kPlanChassis = 1U << 16;
constexpr std::uint32_t kPlanHealth = 1U << 17;

/// The bits for which the plan's links are followed when these wants are
/// asked for.
std::uint32_t planBits(std::uint32_t wants);

/// Number of kinds.
constexpr std::size_t kKindCount = static_cast<std::size_t>(Kind::kExtra) + 1;

/// When a link is followed, beyond the wants of its row. Conditions that
/// compare models are fall-backs: they hold at once where the better model is
/// not linked, and else only after it turned out to be empty.
enum class Condition : std::uint8_t {
  kAlways,
  kNoNewFans,            ///< The chassis' ThermalSubsystem yields no fan.
  kNoNewSupplies,        ///< The chassis' PowerSubsystem yields no supply.
  kAfterChassisDevices,  ///< Where expanding works, the collections of the
                         ///< chassis come first, since they are cheaper.
  kNoSystemDevices,      ///< The system's PCIeDevices yield no device.
  kNoChassisDevices,     ///< Nor do the collections of its chassis.
  kNoFansSoFar,          ///< No chassis of the node, nor one nearer, has a fan.
  kNoPowerSoFar,         ///< The same for supplies.
  kNoSpeed               ///< The processor does not tell its operating speed.
};

/// One row of the plan: where a resource of one kind links to another.
struct Rule {
  Kind from;
  std::string_view path;  ///< Property path of the link or links.
  Kind to;
  std::uint32_t wants;      ///< Plan bits for which the link is followed.
  std::string_view rollup;  ///< For kWantHealth: path of the Status whose
                            ///< roll-up of OK keeps the walk out; empty: the
                            ///< walk always goes there.
  Condition condition;
};

/// The rows for resources of one kind, in plan order.
const std::vector<Rule>& rulesFrom(Kind kind);

/// How many further answers, one after another, may hang on a resource of
/// this kind: what hangs longest is asked first.
int heightOf(Kind kind);

/// Whether a resource of this kind is a collection, whose members stand in
/// "Members" and may come in pages.
bool isCollection(Kind kind);

}  // namespace redfish
