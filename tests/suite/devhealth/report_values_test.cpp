// What the report holds beyond what the tables print.
#include <gtest/gtest.h>

#include "suite/devhealth/inventory/dimm_mapping.h"
#include "suite/devhealth/inventory/fan_mapping.h"
#include "suite/devhealth/inventory/part_values.h"
#include "suite/devhealth/inventory/pci_mapping.h"
#include "suite/devhealth/inventory/power_mapping.h"
#include "suite/devhealth/inventory/processor_mapping.h"
#include "suite/devhealth/inventory/system_mapping.h"
#include "suite/devhealth/parts/rows/system_parts.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using report::Health;
using report::State;

redfish::json::object objectOf(const char* text) {
  return redfish::parseObject(text).value();
}

TEST(StateOfPart, KnowsTheStatesOfTheSchema) {
  EXPECT_EQ(stateOfPart(objectOf(R"({"Status": {"State": "Enabled"}})")),
            State::kEnabled);
  EXPECT_EQ(stateOfPart(objectOf(R"({"Status": {"State": "StandbySpare"}})")),
            State::kStandbySpare);
  EXPECT_EQ(stateOfPart(objectOf(R"({"Status": {"State": "Melted"}})")),
            State::kUnknown);
  EXPECT_EQ(stateOfPart(objectOf(R"({"Status": {"State": 7}})")),
            State::kUnknown);
  EXPECT_EQ(stateOfPart(objectOf("{}")), State::kUnknown);
}

TEST(HealthOfPart, IsTheRollupWhereThereIsNoOwn) {
  EXPECT_EQ(healthOfPart(objectOf(R"({"Status": {"HealthRollup": "OK"}})")),
            Health::kNormal);
  EXPECT_EQ(healthOfPart(objectOf(R"({"Status": {"Health": "Critical"}})")),
            Health::kError);
  EXPECT_EQ(healthOfPart(objectOf("{}")), Health::kUnknown);
}

TEST(CountAt, TakesWholePositiveNumbersOnly) {
  const auto count = [](const char* text) {
    return countAt(objectOf(text), "N");
  };
  EXPECT_EQ(count(R"({"N": 8})"), 8);
  EXPECT_EQ(count(R"({"N": "8"})"), 8);
  EXPECT_EQ(count(R"({"N": 8.5})"), std::nullopt);
  EXPECT_EQ(count(R"({"N": 0})"), std::nullopt);
  EXPECT_EQ(count(R"({"N": -8})"), std::nullopt);
  EXPECT_EQ(count(R"({"N": 1e300})"), std::nullopt);
  EXPECT_EQ(count(R"({"N": "many"})"), std::nullopt);
}

TEST(ReportValues, OfAProcessor) {
  Server server;
  server.members("Systems/1", "Processors", {{"C1", R"({"Name": "CPU 1",
      "TotalCores": 8, "TotalThreads": 16, "OperatingSpeedMHz": 2400.5,
      "MaxSpeedMHz": 3500, "Status": {"Health": "OK", "State": "Enabled"}})"}});
  const auto parts = mapProcessors(server.graph(), server.node()).records;
  ASSERT_EQ(parts.size(), 1);
  EXPECT_EQ(parts[0].id, "/redfish/v1/Systems/1/Processors/C1");
  EXPECT_EQ(parts[0].cores, 8);
  EXPECT_EQ(parts[0].threads, 16);
  EXPECT_EQ(parts[0].speedMhz, 2400.5);
  EXPECT_EQ(parts[0].maxSpeedMhz, 3500);
  EXPECT_EQ(parts[0].health, Health::kNormal);
  EXPECT_EQ(parts[0].state, State::kEnabled);
}

TEST(ReportValues, OfMemory) {
  Server server;
  server.members(
      "Systems/1", "Memory",
      {{"D1", R"({"DeviceLocator": "A1", "CapacityMiB": 16384,
         "OperatingSpeedMhz": 4800,
         "Status": {"Health": "Warning", "State": "Enabled"}})"},
       {"D2", R"({"DeviceLocator": "A2", "Status": {"State": "Absent"}})"},
       {"L3", R"({"MemoryType": "Cache", "CapacityMiB": 8})"}});
  const auto parts = mapDimms(server.graph(), server.node()).records;
  ASSERT_EQ(parts.size(), 1);
  EXPECT_EQ(parts[0].id, "/redfish/v1/Systems/1/Memory/D1");
  EXPECT_EQ(parts[0].capacityMib, 16384);
  EXPECT_EQ(parts[0].maxSpeedMhz, 4800);
  EXPECT_EQ(parts[0].maxSpeedMts, std::nullopt);
  EXPECT_EQ(parts[0].health, Health::kWarning);
  EXPECT_EQ(memoryPlaces(server.graph(), server.node()), 2);
}

TEST(ReportValues, OfAFanWithBothSpeeds) {
  Server server;
  server.linked("Chassis/1", "ThermalSubsystem", "{}");
  server.members("Chassis/1/ThermalSubsystem", "Fans",
                 {{"F1", R"({"Name": "Fan 1",
                   "SpeedPercent": {"Reading": 45, "SpeedRPM": 6480}})"}});
  const auto parts = mapFans(server.graph(), server.node()).records;
  ASSERT_EQ(parts.size(), 1);
  EXPECT_EQ(parts[0].speedRpm, 6480);
  EXPECT_EQ(parts[0].speedPercent, 45);
  EXPECT_EQ(parts[0].health, Health::kUnknown);
}

TEST(ReportValues, OfAPowerSupplyInTheOlderDocument) {
  Server server;
  server.linked("Chassis/1", "Power", R"({"PowerSupplies": [{"Name": "PSU 1",
      "PowerCapacityWatts": 1600, "Manufacturer": "Kestwyn", "Model": "P16",
      "SerialNumber": "S1", "SparePartNumber": "SP1"}]})");
  const auto parts = mapPowers(server.graph(), server.node()).records;
  ASSERT_EQ(parts.size(), 1);
  EXPECT_EQ(parts[0].id, "/redfish/v1/Chassis/1/Power#/PowerSupplies/0");
  EXPECT_EQ(parts[0].capacityWatts, 1600);
  EXPECT_EQ(parts[0].manufacturer, "Kestwyn");
  EXPECT_EQ(parts[0].model, "P16");
  EXPECT_EQ(parts[0].serialNumber, "S1");
  EXPECT_EQ(parts[0].partNumber, "SP1");
}

TEST(ReportValues, OfAPciAdapter) {
  Server server;
  server.members("Chassis/1", "PCIeDevices", {{"N1", R"({"Name": "NIC",
      "Slot": {"Location": {"PartLocation": {"ServiceLabel": "Slot 3"}}},
      "Status": {"Health": "OK", "State": "Melted"}})"}});
  const auto parts = mapPciAdapters(server.graph(), server.node()).records;
  ASSERT_EQ(parts.size(), 1);
  EXPECT_EQ(parts[0].id, "/redfish/v1/Chassis/1/PCIeDevices/N1");
  EXPECT_EQ(parts[0].slot, "Slot 3");
  EXPECT_EQ(parts[0].health, Health::kNormal);
  EXPECT_EQ(parts[0].state, State::kUnknown);
  EXPECT_EQ(parts[0].stateText, "Melted");
}

TEST(ReportValues, OfTheSystem) {
  Server server(R"({"PowerState": "On", "BiosVersion": "2.10"})");
  const auto system = mapSystem(server.graph(), server.node()).records.at(0);
  EXPECT_EQ(system.powerState, report::PowerState::kOn);
  EXPECT_EQ(system.firmwareVersion, "2.10");
}

}  // namespace
}  // namespace devhealth
