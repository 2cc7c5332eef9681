#include "suite/devhealth/inventory/pci_mapping.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/printed_table.h"
#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using Tarvex::DeviceHealth::PCIAdapter;
using Members = std::vector<std::pair<std::string, std::string>>;
using Texts = std::vector<std::string>;

std::vector<PCIAdapter> rowsOf(const Server& server) {
  const auto result = printed(mapPciAdapters(server.graph(), server.node()));
  EXPECT_FALSE(result.failure.has_value());
  return result.records;
}

Texts adapterNames(const Server& server) {
  Texts found;
  for (const PCIAdapter& row : rowsOf(server)) {
    found.push_back(row.description);
  }
  return found;
}

Texts tags(const Server& server) {
  Texts found;
  for (const PCIAdapter& row : rowsOf(server)) {
    found.push_back(row.tag);
  }
  return found;
}

Server withDevices(const Members& devices) {
  Server server;
  server.members("Chassis/1", "PCIeDevices", devices);
  return server;
}

PCIAdapter onlyAdapter(const std::string& device) {
  return rowsOf(withDevices({{"Slot1", device}})).at(0);
}

TEST(MapPciAdapters, FieldsComeFromTheirProperties) {
  const PCIAdapter row = onlyAdapter(R"({"Id": "S1", "Name": "Raid Card",
      "Manufacturer": "Kestwyn", "Model": "KR8", "SerialNumber": "K1",
      "PartNumber": "KR8-2", "SKU": "F900", "SparePartNumber": "X",
      "Status": {"State": "StandbyOffline", "Health": "Warning",
                 "Conditions": [{"Message": "Runs at half width."}, null,
                                {"Message": "Is hot."}, {}]}})");
  EXPECT_EQ(row.description, "Raid Card");
  EXPECT_EQ(row.tag, "S1");
  EXPECT_EQ(row.manufacturer, "Kestwyn");
  EXPECT_EQ(row.model, "KR8");
  EXPECT_EQ(row.serialNumber, "K1");
  EXPECT_EQ(row.partNumber, "KR8-2");
  EXPECT_EQ(row.sku, "F900");
  EXPECT_EQ(row.operationalStatus, "StandbyOffline");
  EXPECT_EQ(row.statusDescriptions, "Warning; Runs at half width.; Is hot.");
}

TEST(MapPciAdapters, SparePartNumberStandsInForTheSku) {
  EXPECT_EQ(onlyAdapter(R"({"SKU": "NA", "SparePartNumber": "F1"})").sku, "F1");
}

TEST(MapPciAdapters, MissingStateIsUnknown) {
  EXPECT_EQ(onlyAdapter(R"({"Status": {"State": null}})").operationalStatus,
            "Unknown");
  EXPECT_EQ(onlyAdapter("{}").operationalStatus, "Unknown");
}

TEST(MapPciAdapters, DevicesOfTheSystemComeBeforeThoseOfTheChassis) {
  Server server =
      withDevices({{"1", R"({"Name": "One"})"}, {"2", R"({"Name": "Two"})"}});
  server.put("Systems/1",
             R"({"PCIeDevices": [)" + linkTo("Chassis/1/PCIeDevices/2") + "]}");
  EXPECT_EQ(adapterNames(server), (Texts{"Two"}));
}

TEST(MapPciAdapters, DevicesOfTheSystemThatAreGoneLeaveThoseOfTheChassis) {
  Server server = withDevices({{"1", R"({"Name": "One"})"}});
  server.put("Systems/1",
             R"({"PCIeDevices": [)" + linkTo("Chassis/1/PCIeDevices/9") + "]}");
  server.put("Chassis/1/PCIeDevices/9", kMissing);
  EXPECT_EQ(adapterNames(server), (Texts{"One"}));
}

TEST(MapPciAdapters, OldLinksOfTheChassisAreTheLastResort) {
  Server server("{}", R"({"Links": {"PCIeDevices": [)" +
                          linkTo("Systems/1/PCIeDevices/1") + "]}}");
  server.put("Systems/1/PCIeDevices/1", R"({"Name": "Old"})");
  EXPECT_EQ(adapterNames(server), (Texts{"Old"}));
}

TEST(MapPciAdapters, UnreadableListIsAFailure) {
  Server server;
  server.linked("Chassis/1", "PCIeDevices", kBroken);
  EXPECT_TRUE(printed(mapPciAdapters(server.graph(), server.node()))
                  .failure.has_value());
}

TEST(MapPciAdapters, OldLinksMakeUpForAnUnreadableList) {
  Server server("{}", R"({"Links": {"PCIeDevices": [)" +
                          linkTo("Systems/1/PCIeDevices/1") + "]}}");
  server.put("Systems/1/PCIeDevices/1", R"({"Name": "Old"})");
  server.linked("Chassis/1", "PCIeDevices", kBroken);
  EXPECT_EQ(adapterNames(server), (Texts{"Old"}));
}

TEST(MapPciAdapters, HalfOfTheListsIsAFailure) {
  Server server = withDevices({{"1", R"({"Name": "One"})"}});
  server.put("Systems/1", R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") +
                              "," + linkTo("Chassis/2") + "]}}");
  server.put("Chassis/2", "{}");
  server.linked("Chassis/2", "PCIeDevices", kBroken);
  EXPECT_TRUE(printed(mapPciAdapters(server.graph(), server.node()))
                  .failure.has_value());
}

TEST(MapPciAdapters, AbsentAndAuxiliaryDevicesMakeNoRows) {
  EXPECT_EQ(
      adapterNames(withDevices({{"1", R"({"Status": {"State": "Absent"}})"},
                                {"2", R"({"DeviceType": "Retimer"})"},
                                {"3", R"({"DeviceType": "Simulated"})"},
                                {"4", R"({"DeviceType": "Hologram"})"}})),
      (Texts{"PCIe Device 4"}));
}

TEST(MapPciAdapters, UnreadableDeviceHasARow) {
  const auto rows = rowsOf(
      withDevices({{"1", R"({"Name": "One"})"}, {"2", std::string(kBroken)}}));
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].description, "2");
  EXPECT_EQ(rows[0].operationalStatus, "Unknown");
  EXPECT_EQ(rows[0].tag, "");
}

TEST(MapPciAdapters, ServerWithoutAdaptersHasAnEmptyTable) {
  EXPECT_TRUE(rowsOf(Server()).empty());
}

std::string slot(const std::string& label, const std::string& device) {
  return R"({"Location": {"PartLocation": {"ServiceLabel": ")" + label +
         R"("}}, "Links": {"PCIeDevice": [)" +
         (device.empty() ? "" : linkTo(device)) + "]}}";
}

TEST(MapPciAdapters, SlotsThatCannotBeReadCostOnlyTheirLabels) {
  Server server = withDevices({{"A", R"({"Name": "First"})"}});
  server.linked("Chassis/1", "PCIeSlots", kBroken);
  EXPECT_EQ(adapterNames(server), (Texts{"First"}));
}

TEST(MapPciAdapters, DeviceCalledByItsSlotIsFollowedByItsModel) {
  Server server = withDevices({{"A", R"({"Name": "Slot 1", "Model": "KR8"})"},
                               {"B", R"({"Name": "Slot 2"})"},
                               {"C", R"({"Name": "Raid", "Model": "KR9"})"}});
  server.linked("Chassis/1", "PCIeSlots",
                R"({"Slots": [)" + slot("Slot 1", "Chassis/1/PCIeDevices/A") +
                    "," + slot("Slot 2", "Chassis/1/PCIeDevices/B") + "," +
                    slot("Slot 3", "Chassis/1/PCIeDevices/C") + "]}");
  EXPECT_EQ(adapterNames(server), (Texts{"Raid", "Slot 1 KR8", "Slot 2"}));
}

Server withAdapter(const std::string& device, const std::string& adapter) {
  Server server = withDevices({{"D", device}});
  server.members("Chassis/1", "NetworkAdapters", {{"N", adapter}});
  return server;
}

TEST(MapPciAdapters, AdapterThatNamesADeviceFillsItsGaps) {
  const auto rows = rowsOf(withAdapter(
      R"({"Name": "Card", "Model": "M1", "Status": {"State": "Enabled"}})",
      R"({"Name": "NIC", "Model": "M2", "Manufacturer": "Kestwyn",
          "SerialNumber": "S", "PartNumber": "P", "SKU": "F",
          "Status": {"State": "Disabled", "Health": "OK"},
          "Controllers": [null, {"Links": {"PCIeDevices": [
              {"@odata.id": "/redfish/v1/Chassis/1/PCIeDevices/D/"}]}}]})"));
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].description, "Card");
  EXPECT_EQ(rows[0].model, "M1");
  EXPECT_EQ(rows[0].manufacturer, "Kestwyn");
  EXPECT_EQ(rows[0].serialNumber, "S");
  EXPECT_EQ(rows[0].partNumber, "P");
  EXPECT_EQ(rows[0].sku, "F");
  EXPECT_EQ(rows[0].operationalStatus, "Enabled");
  EXPECT_EQ(rows[0].statusDescriptions, "");
}

TEST(MapPciAdapters, LoneAdapterIsARowOfItsOwn) {
  const auto rows = rowsOf(withAdapter(
      R"({"Name": "Card"})",
      R"({"Id": "N", "Name": "Network Adapter", "SparePartNumber": "X",
          "Status": {"State": "Enabled"}, "Controllers": {}})"));
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[1].description, "Network Adapter N");
  EXPECT_EQ(rows[1].tag, "N");
  EXPECT_EQ(rows[1].sku, "");
  EXPECT_EQ(rows[1].operationalStatus, "Enabled");
}

TEST(MapPciAdapters, AbsentAdapterMakesNoRow) {
  EXPECT_EQ(
      rowsOf(withAdapter("{}", R"({"Status": {"State": "Absent"}})")).size(),
      1U);
}

TEST(MapPciAdapters, UnreadableListOfAdaptersIsAFailure) {
  Server server = withDevices({{"A", "{}"}});
  server.linked("Chassis/1", "NetworkAdapters", kBroken);
  EXPECT_TRUE(printed(mapPciAdapters(server.graph(), server.node()))
                  .failure.has_value());
}

TEST(MapPciAdapters, RepeatedTagsCarryTheirChassis) {
  Server server =
      withDevices({{"1", R"({"Id": "1"})"}, {"2", R"({"Id": "2"})"}});
  server.put("Systems/1", R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") +
                              "," + linkTo("Chassis/R") + "]}}");
  server.put("Chassis/R", R"({"Id": "Riser"})");
  server.members("Chassis/R", "PCIeDevices", {{"1", R"({"Id": "1"})"}});
  EXPECT_EQ(tags(server), (Texts{"1/1", "2", "Riser/1"}));
}

TEST(MapPciAdapters, TagsOfSystemDevicesCarryTheChassisTheyName) {
  Server server(R"({"PCIeDevices": [)" + linkTo("Systems/1/PCIeDevices/1") +
                "," + linkTo("Systems/1/PCIeDevices/2") + "]}");
  server.put(
      "Systems/1/PCIeDevices/1",
      R"({"Id": "X", "Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  server.put("Systems/1/PCIeDevices/2", R"({"Id": "X"})");
  server.put("Chassis/1", R"({"Id": "Main"})");
  EXPECT_EQ(tags(server), (Texts{"Main/X", "1/X"}));
}

TEST(MapPciAdapters, DevicesOfAnotherNodeAreNotOurs) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "]}}");
  server.addNode("2");
  server.members("Chassis/1", "PCIeDevices",
                 {{"A", R"({"Name": "Own", "Links": {"Chassis": [)" +
                            linkTo("Chassis/1") + "]}}"},
                  {"B", R"({"Name": "Other", "Links": {"Chassis": [)" +
                            linkTo("Chassis/2") + "]}}"},
                  {"C", R"({"Name": "Nobody's"})"}});
  EXPECT_EQ(adapterNames(server), (Texts{"Nobody's", "Own"}));
}

TEST(MapPciAdapters, NamedDevicesAreOursWhereverTheySit) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") +
                R"(]}, "PCIeDevices": [)" + linkTo("Chassis/2/PCIeDevices/B") +
                "]}");
  server.addNode("2");
  server.put("Chassis/2/PCIeDevices/B",
             R"({"Name": "Lent", "Links": {"Chassis": [)" +
                 linkTo("Chassis/2") + "]}}");
  EXPECT_EQ(adapterNames(server), (Texts{"Lent"}));
}

}  // namespace
}  // namespace devhealth
