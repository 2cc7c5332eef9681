#include "suite/devhealth/inventory/system_mapping.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/printed_table.h"
#include "tests/suite/devhealth/server.h"

namespace devhealth {
namespace {

Tarvex::DeviceHealth::SystemBoard board(std::string_view system,
                                        std::string_view chassis = "{}") {
  const Server server(system, chassis);
  const auto result = printed(mapSystem(server.graph(), server.node()));
  EXPECT_FALSE(result.failure.has_value());
  EXPECT_EQ(result.records.size(), 1U);
  return result.records.front();
}

TEST(MapSystem, NameIsMakerAndModel) {
  EXPECT_EQ(board(R"({"Manufacturer": "Orlen", "Model": "R7"})").machineName,
            "Orlen R7");
}

TEST(MapSystem, MakerIsNotRepeated) {
  EXPECT_EQ(
      board(R"({"Manufacturer": "Orlen", "Model": "ORLEN R7"})").machineName,
      "ORLEN R7");
}

TEST(MapSystem, ModelAloneIsAName) {
  EXPECT_EQ(board(R"({"Manufacturer": null, "Model": "R7"})").machineName,
            "R7");
}

TEST(MapSystem, ChassisNamesASystemWithoutModel) {
  EXPECT_EQ(board(R"({"Manufacturer": "Orlen", "HostName": "db1"})",
                  R"({"Manufacturer": "Velmarn", "Model": "C2"})")
                .machineName,
            "Velmarn C2");
}

TEST(MapSystem, HostNameThenNameAreTheLastResorts) {
  EXPECT_EQ(board(R"({"HostName": "db1", "Name": "System"})").machineName,
            "db1");
  EXPECT_EQ(board(R"({"Name": "Main System"})").machineName, "Main System");
}

TEST(MapSystem, TypeFallsBackInOrder) {
  EXPECT_EQ(board(R"({"SKU": "a", "PartNumber": "b"})").machineTypeModel, "a");
  EXPECT_EQ(board(R"({"PartNumber": "b", "SubModel": "c"})").machineTypeModel,
            "b");
  EXPECT_EQ(board(R"({"SubModel": "c", "Model": "d"})").machineTypeModel, "c");
  EXPECT_EQ(board(R"({"Model": "d"})", R"({"SKU": "e"})").machineTypeModel,
            "d");
  EXPECT_EQ(board("{}", R"({"SKU": "e", "PartNumber": "f"})").machineTypeModel,
            "e");
  EXPECT_EQ(
      board("{}", R"({"PartNumber": "f", "Model": "g"})").machineTypeModel,
      "f");
  EXPECT_EQ(board("{}", R"({"Model": "g"})").machineTypeModel, "g");
}

TEST(MapSystem, SerialNumberFallsBackToTheChassis) {
  EXPECT_EQ(board(R"({"SerialNumber": "S1"})", R"({"SerialNumber": "S2"})")
                .serialNumber,
            "S1");
  EXPECT_EQ(board(R"({"SerialNumber": "N/A"})", R"({"SerialNumber": "S2"})")
                .serialNumber,
            "S2");
}

TEST(MapSystem, UuidIsInSmallLetters) {
  EXPECT_EQ(board(R"({"UUID": "6f1E0c1a-0000-4b4e-9d77-0123456789AB"})").uuid,
            "6f1e0c1a-0000-4b4e-9d77-0123456789ab");
}

TEST(MapSystem, UuidsOfOneDigitAreNone) {
  EXPECT_EQ(board(R"({"UUID": "00000000-0000-0000-0000-000000000000"})",
                  R"({"UUID": "FFFFFFFF-ffff-FFFF-FFFF-FFFFFFFFFFFF"})")
                .uuid,
            "");
}

TEST(MapSystem, UuidFallsBackToTheChassis) {
  EXPECT_EQ(board(R"({"UUID": "00000000-0000-0000-0000-000000000000"})",
                  R"({"UUID": "6f1e0c1a-0000-4b4e-9d77-0123456789ab"})")
                .uuid,
            "6f1e0c1a-0000-4b4e-9d77-0123456789ab");
}

TEST(MapSystem, ServiceTagIsTheSerialNumberAndNoType) {
  const auto record = board(R"({"SKU": "F7TAG", "PartNumber": "0BOARD",
      "SerialNumber": "CNBOARD", "Model": "Prismorel 400",
      "Oem": {"Kestwyn": {"System": [7, {"ServiceTag": "f7tag"}]}}})");
  EXPECT_EQ(record.machineTypeModel, "Prismorel 400");
  EXPECT_EQ(record.serialNumber, "F7TAG");
}

TEST(MapSystem, ServiceTagMayStandInTheServiceRoot) {
  Server server(R"({"SKU": "F7TAG", "PartNumber": "0BOARD"})",
                R"({"SKU": "F7TAG", "PartNumber": "PC4"})");
  server.put("", R"({"Oem": {"Kestwyn": {"ServiceTag": "F7TAG"}},
                     "Systems": {"@odata.id": "/redfish/v1/Systems"},
                     "Chassis": {"@odata.id": "/redfish/v1/Chassis"}})");
  const auto record =
      printed(mapSystem(server.graph(), server.node())).records.front();
  EXPECT_EQ(record.machineTypeModel, "PC4");
  EXPECT_EQ(record.serialNumber, "F7TAG");
}

TEST(MapSystem, SubModelComesFirstBesideAServiceTag) {
  EXPECT_EQ(board(R"({"SKU": "F7TAG", "SubModel": "400x", "Model": "400",
                      "Oem": {"Kestwyn": {"ServiceTag": "F7TAG"}}})")
                .machineTypeModel,
            "400x");
}

TEST(MapSystem, SkuWithoutATagOfItsTextIsTheType) {
  const auto record = board(R"({"SKU": "PR-400", "SerialNumber": "S1",
      "Oem": {"Kestwyn": {"ServiceTag": "F7TAG"}}})");
  EXPECT_EQ(record.machineTypeModel, "PR-400");
  EXPECT_EQ(record.serialNumber, "S1");
}

TEST(MapSystem, StockNumberIsCutOutOfItsText) {
  EXPECT_EQ(
      board(R"({"SKU": "SKU=PR4;ModelName=Prismorel 400"})").machineTypeModel,
      "PR4");
  EXPECT_EQ(board(R"({"SKU": "SKU=NotProvided;ModelName=Prismorel 400",
                      "Model": "Prismorel"})")
                .machineTypeModel,
            "Prismorel");
}

TEST(MapSystem, PlaceholdersAreNoValues) {
  const auto record = board(R"({"SKU": "0123456789", "Model": "None",
      "SerialNumber": "..........", "Manufacturer": "nil"})",
                            R"({"Model": "PC4", "SerialNumber": "C1"})");
  EXPECT_EQ(record.machineTypeModel, "PC4");
  EXPECT_EQ(record.serialNumber, "C1");
}

TEST(MapSystem, EmptySystemGivesEmptyTexts) {
  const auto record = board(R"({"Id": null})");
  EXPECT_EQ(record.machineName, "System 1");
  EXPECT_EQ(record.machineTypeModel, "");
  EXPECT_EQ(record.serialNumber, "");
  EXPECT_EQ(record.uuid, "");
}

}  // namespace
}  // namespace devhealth
