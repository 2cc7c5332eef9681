#pragma once

#include <bitset>
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
  kDeviceList,    ///< A maker's own list of devices.
  kListedDevice,  ///< A member of it.
  kNetworkAdapters,
  kNetworkAdapter,
  kNetworkInterfaces,
  kNetworkInterface,
  kStorageCollection,
  kStorage,
  kStorageControllers,
  kStorageController,
  kVolumes,
  kVolume,
  kDrive,
  kSimpleStorages,
  kSimpleStorage,
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

/// The place of a kind in a set, or in a table of all kinds.
constexpr std::size_t index(Kind kind) {
  return static_cast<std::size_t>(kind);
}

/// The parts that one resource plays.
using KindSet = std::bitset<kKindCount>;

/// Calls `use` for each kind in a set.
template <typename Use>
void forEachKind(const KindSet& kinds, Use use) {
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (kinds.test(i)) {
      use(static_cast<Kind>(i));
    }
  }
}

/// When a link is followed, beyond the wants of its row. Conditions that
/// compare sources are fall-backs: they hold at once where the better source
/// is not linked, and else only after it turned out to be empty.
enum class Condition : std::uint8_t {
  kAlways,
  kPartsUnclear,         ///< The chassis must be read to know which systems
                         ///< are parts of which.
  kNoSpeed,              ///< A central processor that states no speed.
  kNoNewFans,            ///< The chassis' ThermalSubsystem yields no fan.
  kNoNewSupplies,        ///< The chassis' PowerSubsystem yields no supply.
  kAfterChassisDevices,  ///< Where expanding works, the collections of the
                         ///< chassis come first, since they are cheaper.
  kNoSystemDevices,      ///< The systems' PCIeDevices yield no device.
  kNoChassisDevices,     ///< Nor do the chassis' collections of devices.
  kNoReadableDevices,    ///< The systems and the links of the chassis name
                         ///< none, and no member of those collections can be
                         ///< read.
  kNoChassisAdapters,    ///< The chassis' NetworkAdapters yield no adapter.
  kNoControllerArray,    ///< The Storage lists no controllers in place.
  kNoStorage,            ///< No system of the node links Storage.
  kNoFansSoFar,          ///< No chassis of the node, nor one nearer, has a fan.
  kNoPowerSoFar          ///< The same for supplies.
};

/// One row of the plan: where a resource of one kind links to another.
struct Rule {
  Kind from;
  std::string_view path;  ///< Property path (`memberAt`) of the link or links.
  Kind to;
  std::uint32_t wants;      ///< Plan bits for which the link is followed.
  std::string_view rollup;  ///< For kWantHealth: path of the Status whose
                            ///< roll-up of OK keeps the walk out; empty: the
                            ///< walk always goes there.
  Condition condition;
};

/// Whether a row tells what belongs to a node, rather than what is in it.
bool isStructural(const Rule& rule);

/// The rows for resources of one kind, in plan order.
const std::vector<Rule>& rulesFrom(Kind kind);

/// The longest chain of further answers that a resource of this kind may start.
/// The resources with the longest chain are asked for first.
int heightOf(Kind kind);

/// Whether a resource of this kind is a collection, whose members stand in
/// "Members" and may come in pages.
bool isCollection(Kind kind);

}  // namespace redfish
