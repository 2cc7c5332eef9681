// Every row of the plan: on a service where only that row's link leads to a
// resource, the resource is asked for.
#include "suite/redfish/crawl/plan.h"

#include <gtest/gtest.h>

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>
#include <map>
#include <string>
#include <vector>

#include "tests/suite/redfish/service_fixture.h"

namespace redfish {
namespace {

// A link from one resource to another: "Chassis/C", "Power", "Power".
struct Link {
  const char* from;
  const char* path;
  const char* to;
};

struct Row {
  const char* name;
  std::uint32_t want;
  std::vector<Link> way;  // From system S, chassis C or the root to the holder.
  const char* holder;
  const char* path;
};

// Only this link leads here.
constexpr const char* kPlannedTarget = "Target";

class PlanRow : public ScriptedService, public testing::TestWithParam<Row> {
 protected:
  PlanRow() {
    options.user.clear();
    for (const Link& given :
         {Link{"", "Systems", "Systems"}, Link{"", "Chassis", "Chassis"},
          Link{"Systems", "Members", "Systems/S"},
          Link{"Chassis", "Members", "Chassis/C"}}) {
      tie(given);
    }
  }

  void tie(const Link& link) {
    json::object* holder = &resources_[link.from];
    std::string path = link.path;
    for (std::size_t slash = path.find('/'); slash != std::string::npos;
         slash = path.find('/')) {
      json::value& step = (*holder)[path.substr(0, slash)];
      if (!step.is_object()) {
        step.emplace_object();
      }
      holder = &step.get_object();
      path.erase(0, slash + 1);
    }
    json::object reference;
    reference["@odata.id"] = std::string("/redfish/v1/") + link.to;
    (*holder)[path] = json::array{reference};
    if (std::string(link.to) != kPlannedTarget) {
      resources_[link.to];
    }
  }

  void serve() {
    json::object& root = resources_[""];
    root["@odata.type"] = "#ServiceRoot.v1_16_0.ServiceRoot";
    root["RedfishVersion"] = "1.18.0";
    for (const char* single :
         {"Systems", "Chassis", "Managers", "ServiceConditions"}) {
      if (json::value* link = root.if_contains(single)) {
        *link = json::value(link->get_array().front());
      }
    }
    for (const auto& [path, body] : resources_) {
      script->on("GET /redfish/v1/" + path, 200, json::serialize(body));
    }
  }

  std::map<std::string, json::object> resources_;
};

TEST_P(PlanRow, LeadsToItsResource) {
  for (const Link& link : GetParam().way) {
    tie(link);
  }
  tie({GetParam().holder, GetParam().path, kPlannedTarget});
  serve();
  EXPECT_FALSE(start().read(wanting(GetParam().want)));
  EXPECT_EQ(script->count(std::string("GET /redfish/v1/") + kPlannedTarget),
            1U);
}

constexpr std::uint32_t kProcessors = kWantProcessors;
constexpr std::uint32_t kFans = kWantFans;
constexpr std::uint32_t kMemory = kWantDimms;
constexpr std::uint32_t kPower = kWantPowers;
constexpr std::uint32_t kPci = kWantPciAdapters;
constexpr std::uint32_t kHealth = kWantHealth;

const Link kToProcessors{"Systems/S", "Processors", "P"};
const Link kToProcessor{"P", "Members", "P/1"};
const Link kToMemory{"Systems/S", "Memory", "M"};
const Link kToStorages{"Systems/S", "Storage", "St"};
const Link kToStorage{"St", "Members", "St/1"};
const Link kToControllers{"St/1", "Controllers", "St/1/C"};
const Link kToVolumes{"St/1", "Volumes", "St/1/V"};
const Link kToSimple{"Systems/S", "SimpleStorage", "Si"};
const Link kToThermal{"Chassis/C", "ThermalSubsystem", "T"};
const Link kToFans{"T", "Fans", "T/F"};
const Link kToPower{"Chassis/C", "PowerSubsystem", "W"};
const Link kToSupplies{"W", "PowerSupplies", "W/S"};
const Link kToBatteries{"W", "Batteries", "W/B"};
const Link kToDevices{"Chassis/C", "PCIeDevices", "D"};
const Link kToDeviceList{"Chassis/C", "Oem/Maker/Links/Devices", "L"};
const Link kToAdapters{"Chassis/C", "NetworkAdapters", "A"};
const Link kToInterfaces{"Systems/S", "NetworkInterfaces", "I"};
const Link kToInterface{"I", "Members", "I/1"};
const Link kToCooling{"Systems/S", "Links/CooledBy", "Cool"};
const Link kToPowering{"Systems/S", "Links/PoweredBy", "Pow"};

// clang-format off
const std::vector<Row> kRows = {
    {"RootManagers", kHealth, {}, "", "Managers"},
    {"RootServiceConditions", kHealth, {}, "", "ServiceConditions"},
    {"ManagersMembers", kHealth, {{"", "Managers", "Managers"}}, "Managers", "Members"},

    {"SystemChassisForSystem", kWantSystem, {}, "Systems/S", "Links/Chassis"},
    {"SystemChassisForFans", kFans, {}, "Systems/S", "Links/Chassis"},
    {"SystemChassisForPower", kPower, {}, "Systems/S", "Links/Chassis"},
    {"SystemChassisForPci", kPci, {}, "Systems/S", "Links/Chassis"},
    {"SystemChassisForHealth", kHealth, {}, "Systems/S", "Links/Chassis"},
    {"SystemManagedBy", kHealth, {}, "Systems/S", "Links/ManagedBy"},
    {"SystemProcessors", kProcessors, {}, "Systems/S", "Processors"},
    {"SystemProcessorsForPci", kPci, {}, "Systems/S", "Processors"},
    {"SystemProcessorsForHealth", kHealth, {}, "Systems/S", "Processors"},
    {"SystemMemory", kMemory, {}, "Systems/S", "Memory"},
    {"SystemMemoryForHealth", kHealth, {}, "Systems/S", "Memory"},
    {"SystemStorageForPci", kPci, {}, "Systems/S", "Storage"},
    {"SystemStorageForHealth", kHealth, {}, "Systems/S", "Storage"},
    {"SystemSimpleStorage", kHealth, {}, "Systems/S", "SimpleStorage"},
    {"SystemDevices", kPci, {}, "Systems/S", "PCIeDevices"},
    {"SystemDevicesForHealth", kHealth, {}, "Systems/S", "PCIeDevices"},
    {"SystemInterfaces", kPci, {}, "Systems/S", "NetworkInterfaces"},
    {"SystemInterfacesForHealth", kHealth, {}, "Systems/S", "NetworkInterfaces"},
    {"SystemCooledBy", kFans, {}, "Systems/S", "Links/CooledBy"},
    {"SystemCooledByForHealth", kHealth, {}, "Systems/S", "Links/CooledBy"},
    {"SystemPoweredBy", kPower, {}, "Systems/S", "Links/PoweredBy"},
    {"SystemPoweredByForHealth", kHealth, {}, "Systems/S", "Links/PoweredBy"},

    {"ChassisContains", kFans, {}, "Chassis/C", "Links/Contains"},
    {"ChassisThermalSubsystem", kFans, {}, "Chassis/C", "ThermalSubsystem"},
    {"ChassisThermalSubsystemForHealth", kHealth, {}, "Chassis/C", "ThermalSubsystem"},
    {"ChassisThermal", kFans, {}, "Chassis/C", "Thermal"},
    {"ChassisThermalForHealth", kHealth, {}, "Chassis/C", "Thermal"},
    {"ChassisPowerSubsystem", kPower, {}, "Chassis/C", "PowerSubsystem"},
    {"ChassisPowerSubsystemForHealth", kHealth, {}, "Chassis/C", "PowerSubsystem"},
    {"ChassisPower", kPower, {}, "Chassis/C", "Power"},
    {"ChassisPowerForHealth", kHealth, {}, "Chassis/C", "Power"},
    {"ChassisDevices", kPci, {}, "Chassis/C", "PCIeDevices"},
    {"ChassisDevicesForHealth", kHealth, {}, "Chassis/C", "PCIeDevices"},
    {"ChassisDeviceLinks", kPci, {}, "Chassis/C", "Links/PCIeDevices"},
    {"ChassisDeviceLinksForHealth", kHealth, {}, "Chassis/C", "Links/PCIeDevices"},
    {"ChassisDeviceList", kPci, {}, "Chassis/C", "Oem/Maker/Links/Devices"},
    {"ChassisDeviceListForHealth", kHealth, {}, "Chassis/C", "Oem/Maker/Links/Devices"},
    {"ChassisAdapters", kPci, {}, "Chassis/C", "NetworkAdapters"},
    {"ChassisAdaptersForHealth", kHealth, {}, "Chassis/C", "NetworkAdapters"},
    {"ChassisSlots", kPci, {}, "Chassis/C", "PCIeSlots"},
    {"ChassisCooledBy", kFans, {}, "Chassis/C", "Links/CooledBy"},
    {"ChassisCooledByForHealth", kHealth, {}, "Chassis/C", "Links/CooledBy"},
    {"ChassisFans", kFans, {}, "Chassis/C", "Links/Fans"},
    {"ChassisFansForHealth", kHealth, {}, "Chassis/C", "Links/Fans"},
    {"ChassisPoweredBy", kPower, {}, "Chassis/C", "Links/PoweredBy"},
    {"ChassisPoweredByForHealth", kHealth, {}, "Chassis/C", "Links/PoweredBy"},
    {"ChassisPowerSupplies", kPower, {}, "Chassis/C", "Links/PowerSupplies"},
    {"ChassisPowerSuppliesForHealth", kHealth, {}, "Chassis/C", "Links/PowerSupplies"},
    {"ChassisContainedByForFans", kFans, {}, "Chassis/C", "Links/ContainedBy"},
    {"ChassisContainedByForPower", kPower, {}, "Chassis/C", "Links/ContainedBy"},

    {"ProcessorsMembers", kProcessors, {kToProcessors}, "P", "Members"},
    {"ProcessorsMembersForPci", kPci, {kToProcessors}, "P", "Members"},
    {"ProcessorsMembersForHealth", kHealth, {kToProcessors}, "P", "Members"},
    {"ProcessorMetrics", kProcessors, {kToProcessors, kToProcessor}, "P/1", "Metrics"},
    {"MemoryMembers", kMemory, {kToMemory}, "M", "Members"},
    {"MemoryMembersForHealth", kHealth, {kToMemory}, "M", "Members"},

    {"ThermalSubsystemFans", kFans, {kToThermal}, "T", "Fans"},
    {"ThermalSubsystemFansForHealth", kHealth, {kToThermal}, "T", "Fans"},
    {"FansMembers", kFans, {kToThermal, kToFans}, "T/F", "Members"},
    {"FansMembersForHealth", kHealth, {kToThermal, kToFans}, "T/F", "Members"},
    {"PowerSubsystemSupplies", kPower, {kToPower}, "W", "PowerSupplies"},
    {"PowerSubsystemSuppliesForHealth", kHealth, {kToPower}, "W", "PowerSupplies"},
    {"PowerSubsystemBatteries", kHealth, {kToPower}, "W", "Batteries"},
    {"SuppliesMembers", kPower, {kToPower, kToSupplies}, "W/S", "Members"},
    {"SuppliesMembersForHealth", kHealth, {kToPower, kToSupplies}, "W/S", "Members"},
    {"BatteriesMembers", kHealth, {kToPower, kToBatteries}, "W/B", "Members"},

    {"DevicesMembers", kPci, {kToDevices}, "D", "Members"},
    {"DevicesMembersForHealth", kHealth, {kToDevices}, "D", "Members"},
    {"DeviceListMembers", kPci, {kToDeviceList}, "L", "Members"},
    {"DeviceListMembersForHealth", kHealth, {kToDeviceList}, "L", "Members"},
    {"AdaptersMembers", kPci, {kToAdapters}, "A", "Members"},
    {"AdaptersMembersForHealth", kHealth, {kToAdapters}, "A", "Members"},
    {"InterfacesMembers", kPci, {kToInterfaces}, "I", "Members"},
    {"InterfacesMembersForHealth", kHealth, {kToInterfaces}, "I", "Members"},
    {"InterfaceLinkedAdapter", kPci, {kToInterfaces, kToInterface}, "I/1", "Links/NetworkAdapter"},
    {"InterfaceLinkedAdapterForHealth", kHealth, {kToInterfaces, kToInterface}, "I/1", "Links/NetworkAdapter"},
    {"InterfaceOwnAdapter", kPci, {kToInterfaces, kToInterface}, "I/1", "NetworkAdapter"},
    {"InterfaceOwnAdapterForHealth", kHealth, {kToInterfaces, kToInterface}, "I/1", "NetworkAdapter"},

    {"StoragesMembers", kPci, {kToStorages}, "St", "Members"},
    {"StoragesMembersForHealth", kHealth, {kToStorages}, "St", "Members"},
    {"StorageControllers", kPci, {kToStorages, kToStorage}, "St/1", "Controllers"},
    {"StorageControllersForHealth", kHealth, {kToStorages, kToStorage}, "St/1", "Controllers"},
    {"StorageDrives", kHealth, {kToStorages, kToStorage}, "St/1", "Drives"},
    {"StorageVolumes", kHealth, {kToStorages, kToStorage}, "St/1", "Volumes"},
    {"ControllersMembers", kPci, {kToStorages, kToStorage, kToControllers}, "St/1/C", "Members"},
    {"ControllersMembersForHealth", kHealth, {kToStorages, kToStorage, kToControllers}, "St/1/C", "Members"},
    {"VolumesMembers", kHealth, {kToStorages, kToStorage, kToVolumes}, "St/1/V", "Members"},
    {"SimpleStoragesMembers", kHealth, {kToSimple}, "Si", "Members"},

    {"CoolingSourceSubsystem", kFans, {kToCooling}, "Cool", "ThermalSubsystem"},
    {"CoolingSourceSubsystemForHealth", kHealth, {kToCooling}, "Cool", "ThermalSubsystem"},
    {"CoolingSourceThermal", kFans, {kToCooling}, "Cool", "Thermal"},
    {"CoolingSourceThermalForHealth", kHealth, {kToCooling}, "Cool", "Thermal"},
    {"CoolingSourceContainedBy", kFans, {kToCooling}, "Cool", "Links/ContainedBy"},
    {"PowerSourceSubsystem", kPower, {kToPowering}, "Pow", "PowerSubsystem"},
    {"PowerSourceSubsystemForHealth", kHealth, {kToPowering}, "Pow", "PowerSubsystem"},
    {"PowerSourcePower", kPower, {kToPowering}, "Pow", "Power"},
    {"PowerSourcePowerForHealth", kHealth, {kToPowering}, "Pow", "Power"},
    {"PowerSourceContainedBy", kPower, {kToPowering}, "Pow", "Links/ContainedBy"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, PlanRow, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

// Every plan row that starts at a resource of its own stands in the list above,
// so that a new row is not forgotten there.
TEST(Plan, EachRowHasItsTest) {
  std::size_t rows = 0;
  for (std::size_t kind = 0; kind < kKindCount; ++kind) {
    rows += rulesFrom(static_cast<Kind>(kind)).size();
  }
  // Systems and Chassis, with their members, lead to everything above; Chassis
  // and its members have two rows each.
  constexpr std::size_t kTrunk = 6;
  std::map<std::pair<std::string, std::string>, int> tested;
  for (const Row& row : kRows) {
    ++tested[{row.holder, row.path}];
  }
  // Chassis/C tests two rows by one link, ContainedBy.
  constexpr std::size_t kSharedLink = 1;
  EXPECT_EQ(tested.size() + kTrunk + kSharedLink, rows);
}

TEST(Plan, CollectionsAreTheKindsWithMembersAlone) {
  EXPECT_TRUE(isCollection(Kind::kNetworkInterfaces));
  EXPECT_TRUE(isCollection(Kind::kDeviceList));
  EXPECT_TRUE(isCollection(Kind::kChassisCollection));
  EXPECT_FALSE(isCollection(Kind::kChassis));
  EXPECT_FALSE(isCollection(Kind::kDrive));
}

TEST(Plan, WhatHangsLongestIsAskedFirst) {
  EXPECT_GT(heightOf(Kind::kSystem), heightOf(Kind::kStorage));
  EXPECT_GT(heightOf(Kind::kStorage), heightOf(Kind::kVolumes));
  EXPECT_EQ(heightOf(Kind::kDrive), 0);
}

}  // namespace
}  // namespace redfish
