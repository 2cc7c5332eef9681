#include "suite/devhealth/inventory/dimm_mapping.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/printed_table.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

std::vector<Tarvex::DeviceHealth::DIMM> modulesOf(
    const std::vector<std::pair<std::string, std::string>>& modules) {
  Server server;
  server.members("Systems/1", "Memory", modules);
  const auto result = printed(mapDimms(server.graph(), server.node()));
  EXPECT_FALSE(result.failure.has_value());
  return result.records;
}

Tarvex::DeviceHealth::DIMM onlyModule(const std::string& module) {
  const auto found = modulesOf({{"D1", module}});
  EXPECT_EQ(found.size(), 1U);
  return found.empty() ? Tarvex::DeviceHealth::DIMM{} : found.front();
}

TEST(MapDimms, FieldsComeFromTheirProperties) {
  const auto row = onlyModule(R"({"Name": "Module", "DeviceLocator": "Slot 9",
      "Location": {"PartLocation": {"ServiceLabel": "DIMM A1"}},
      "PartNumber": "P", "SparePartNumber": "SP", "SerialNumber": "S",
      "Manufacturer": "Kestwyn", "ModuleManufacturerID": "0xCE80",
      "MemoryDeviceType": "DDR5", "MemoryType": "DRAM",
      "AllowedSpeedsMHz": [3200, 4800, "4400"], "OperatingSpeedMhz": 4400})");
  EXPECT_EQ(row.description, "DIMM A1");
  EXPECT_EQ(row.partNumber, "P");
  EXPECT_EQ(row.serialNumber, "S");
  EXPECT_EQ(row.manufacturer, "Kestwyn");
  EXPECT_EQ(row.model, "DDR5");
  EXPECT_EQ(row.maxMemorySpeed, "4800 MHz");
}

TEST(MapDimms, DescriptionFallsBackInOrder) {
  EXPECT_EQ(
      onlyModule(R"({"Name": "Module", "DeviceLocator": "P1-A1"})").description,
      "P1-A1");
  EXPECT_EQ(onlyModule(R"({"Name": "Module 7"})").description, "Module 7");
  EXPECT_EQ(onlyModule(R"({"Name": "Memory", "Id": "7"})").description,
            "DIMM 7");
}

TEST(MapDimms, RepeatedPlacesGiveWay) {
  const auto found =
      modulesOf({{"A", R"({"Name": "M1", "DeviceLocator": "Left",
                 "Location": {"PartLocation": {"ServiceLabel": "DIMM"}}})"},
                 {"B", R"({"Name": "M2", "DeviceLocator": "Right",
                 "Location": {"PartLocation": {"ServiceLabel": "L0"}}})"},
                 {"C", R"({"Name": "M3", "DeviceLocator": "Right",
                 "Location": {"PartLocation": {"ServiceLabel": "L0"}}})"}});
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0].description, "Left");
  EXPECT_EQ(found[1].description, "M2");
  EXPECT_EQ(found[2].description, "M3");
}

TEST(MapDimms, RowsAreInNaturalOrder) {
  const auto found = modulesOf({{"A", R"({"DeviceLocator": "DIMM 10"})"},
                                {"B", R"({"DeviceLocator": "DIMM 9"})"},
                                {"C", R"({"DeviceLocator": "dimm 1"})"}});
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0].description, "dimm 1");
  EXPECT_EQ(found[1].description, "DIMM 9");
  EXPECT_EQ(found[2].description, "DIMM 10");
}

TEST(MapDimms, MakersStandByTheirName) {
  EXPECT_EQ(onlyModule(R"({"Manufacturer": "0xCE00"})").manufacturer,
            "Samsung");
  EXPECT_EQ(onlyModule(R"({"ModuleManufacturerID": "0x2C80"})").manufacturer,
            "Micron");
  EXPECT_EQ(onlyModule(R"({"Manufacturer": "0x1234"})").manufacturer, "0x1234");
  EXPECT_EQ(onlyModule(R"({"Manufacturer": "Unknown",
                     "ModuleManufacturerID": "0xAD00"})")
                .manufacturer,
            "SK Hynix");
}

TEST(MapDimms, TypeIsThatOfTheModule) {
  EXPECT_EQ(onlyModule(R"({"MemoryDeviceType": "DDR3_SDRAM"})").model, "DDR3");
  EXPECT_EQ(onlyModule(R"({"MemoryDeviceType": "Other", "MemoryType": "DRAM"})")
                .model,
            "DRAM");
  EXPECT_EQ(onlyModule(R"({"MemoryDeviceType": "Other", "MemoryType": "Other",
               "Model": "K4"})")
                .model,
            "K4");
}

TEST(MapDimms, OtherFieldsFallBack) {
  const auto row = onlyModule(R"({"SparePartNumber": "SP",
      "ModuleManufacturerID": "0xCE80", "MemoryType": "DRAM"})");
  EXPECT_EQ(row.partNumber, "SP");
  EXPECT_EQ(row.manufacturer, "Samsung");
  EXPECT_EQ(row.model, "DRAM");
  EXPECT_EQ(onlyModule(R"({"Model": "K4"})").model, "K4");
}

TEST(MapDimms, SpeedFallsBackInOrder) {
  EXPECT_EQ(onlyModule(R"({"AllowedSpeedsMHz": [], "OperatingSpeedMhz": 2666,
                     "OperatingSpeedRangeMHz": {"AllowableMax": 3200}})")
                .maxMemorySpeed,
            "3200 MHz");
  EXPECT_EQ(onlyModule(R"({"AllowedSpeedsMHz": [null, 0],
                     "OperatingSpeedMhz": "2666"})")
                .maxMemorySpeed,
            "2666 MHz");
  EXPECT_EQ(onlyModule("{}").maxMemorySpeed, "");
}

TEST(MapDimms, EmptySlotsMakeNoRows) {
  EXPECT_TRUE(modulesOf({{"A", R"({"Status": {"State": "Absent"}})"},
                         {"B", R"({"CapacityMiB": 0})"},
                         {"C", R"({"CapacityMiB": "0", "Status": null})"}})
                  .empty());
}

TEST(MapDimms, ZeroCapacityWithStatusIsAModule) {
  EXPECT_EQ(modulesOf({{"A", R"({"CapacityMiB": 0,
                            "Status": {"State": "Enabled"}})"}})
                .size(),
            1U);
}

TEST(MapDimms, CachesAreNoModulesAndPersistentOnesAre) {
  const auto found =
      modulesOf({{"A", R"({"MemoryType": "Cache"})"},
                 {"B", R"({"Name": "N", "MemoryType": "NVDIMM_N"})"}});
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].description, "N");
}

TEST(MapDimms, UnreadableModuleHasARow) {
  const auto found = modulesOf({{"A", R"({"Name": "First"})"},
                                {"B", std::string(kBroken)},
                                {"C", R"({"Name": "Third"})"}});
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0].description, "B");
  EXPECT_EQ(found[0].model, "");
}

}  // namespace
}  // namespace devhealth
