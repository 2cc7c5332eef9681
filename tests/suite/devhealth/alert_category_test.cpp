#include "suite/devhealth/health/alert_category.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

std::string byPath(const std::string& path) {
  return std::string(categoryName(categoryOf(
      redfish::Graph(), *redfish::Uri::parse("/redfish/v1" + path))));
}

std::string byResource(const std::string& path, const std::string& body) {
  const redfish::Graph graph = graphOf({{"/redfish/v1" + path, body}});
  return std::string(categoryName(
      categoryOf(graph, *redfish::Uri::parse("/redfish/v1" + path))));
}

// The category of a resource of a type in a place that tells nothing.
std::string byType(const std::string& type) {
  return byResource("/Elsewhere/1", R"({"@odata.type": "#)" + type +
                                        ".v1_2_0." + type + R"("})");
}

TEST(CategoryOf, SegmentsOfProcessors) {
  EXPECT_EQ(byPath("/Systems/1/Processors/CPU1"), "Processors");
  EXPECT_EQ(byPath("/Systems/1#/ProcessorSummary"), "Processors");
}

TEST(CategoryOf, SegmentsOfMemory) {
  EXPECT_EQ(byPath("/Systems/1/Memory/D1"), "Memory");
  EXPECT_EQ(byPath("/Systems/1/MemoryDomains/1"), "Memory");
  EXPECT_EQ(byPath("/Systems/1#/MemorySummary"), "Memory");
}

TEST(CategoryOf, SegmentsOfCooling) {
  for (const std::string segment :
       {"ThermalSubsystem", "Thermal", "Fans", "Pumps", "Heaters",
        "LeakDetectors", "CoolingLoops"}) {
    EXPECT_EQ(byPath("/Chassis/1/" + segment + "/x"), "Cooling") << segment;
  }
}

TEST(CategoryOf, SegmentsOfPower) {
  for (const std::string segment :
       {"PowerSubsystem", "Power", "PowerSupplies", "Batteries", "Outlets"}) {
    EXPECT_EQ(byPath("/Chassis/1/" + segment + "/x"), "Power") << segment;
  }
}

TEST(CategoryOf, SegmentsOfPci) {
  for (const std::string segment :
       {"PCIeDevices", "PCIeSlots", "NetworkAdapters", "NetworkInterfaces",
        "EthernetInterfaces", "FabricAdapters", "GraphicsControllers",
        "USBControllers"}) {
    EXPECT_EQ(byPath("/Systems/1/" + segment + "/x"), "PCI") << segment;
  }
}

TEST(CategoryOf, SegmentsOfDisks) {
  for (const std::string segment :
       {"Storage", "SimpleStorage", "Drives", "Volumes", "StorageControllers",
        "MediaControllers"}) {
    EXPECT_EQ(byPath("/Systems/1/" + segment + "/x"), "Disks") << segment;
  }
}

TEST(CategoryOf, FirstSegmentDecides) {
  EXPECT_EQ(byPath("/Systems/1/Processors/1/EnvironmentMetrics"), "Processors");
  EXPECT_EQ(byPath("/Chassis/1/PowerSubsystem/PowerSupplies/1/Assembly"),
            "Power");
}

TEST(CategoryOf, FragmentsCountAsPath) {
  EXPECT_EQ(byPath("/Chassis/1/Thermal#/Redundancy/0"), "Cooling");
  EXPECT_EQ(byPath("/Chassis/1#/Drives/0"), "Disks");
}

TEST(CategoryOf, HoldersAndAnythingElseInThemAreTheSystem) {
  for (const std::string path :
       {"/Systems/1", "/Chassis/1", "/Managers/1", "/Systems/1/Bios",
        "/Systems/1/SecureBoot", "/Chassis/1/TrustedComponents/1",
        "/Chassis/1/Assembly", "/Managers/1/Unheard/Of", "/Systems"}) {
    EXPECT_EQ(byPath(path), "System") << path;
  }
}

TEST(CategoryOf, InstanceNamedLikeASegmentTellsNothing) {
  EXPECT_EQ(byPath("/Systems/Memory"), "System");
  EXPECT_EQ(byPath("/Chassis/Power/Unheard"), "System");
}

TEST(CategoryOf, OtherRootsAreOther) {
  for (const std::string path :
       {"/UpdateService", "/CertificateService/x", "/LicenseService/y",
        "/Fabrics/F/Switches/1", "/ServiceConditions", "/Storage/1"}) {
    EXPECT_EQ(byPath(path), "Other") << path;
  }
}

TEST(CategoryOf, SegmentsAreComparedWhole) {
  EXPECT_EQ(byPath("/Systems/1/MemoryOfOldTimes/1"), "System");
  EXPECT_EQ(byPath("/Systems/1/memory/1"), "System");
  EXPECT_EQ(byPath("/SystemsOfOldTimes/1/Memory"), "Other");
}

TEST(CategoryOf, TypesDecideWhereverTheyStand) {
  const std::pair<const char*, const char*> types[] = {
      {"Processor", "Processors"},
      {"ProcessorMetrics", "Processors"},
      {"OperatingConfig", "Processors"},
      {"Memory", "Memory"},
      {"MemoryMetrics", "Memory"},
      {"MemoryDomain", "Memory"},
      {"ThermalSubsystem", "Cooling"},
      {"Fan", "Cooling"},
      {"Pump", "Cooling"},
      {"ThermalMetrics", "Cooling"},
      {"LeakDetector", "Cooling"},
      {"PowerSupply", "Power"},
      {"Battery", "Power"},
      {"Circuit", "Power"},
      {"PCIeDevice", "PCI"},
      {"NetworkAdapter", "PCI"},
      {"Drive", "Disks"},
      {"Volume", "Disks"},
      {"StorageController", "Disks"},
      {"Storage", "Disks"},
      {"ComputerSystem", "System"},
      {"Chassis", "System"},
      {"Manager", "System"}};
  for (const auto& [type, category] : types) {
    EXPECT_EQ(byType(type), category) << type;
  }
}

TEST(CategoryOf, TypeWinsOverThePath) {
  EXPECT_EQ(byResource("/Chassis/1/Thermal/PSU",
                       R"({"@odata.type": "#PowerSupply.v1_5_0.PowerSupply"})"),
            "Power");
}

TEST(CategoryOf, TypeInsideASchemaCounts) {
  EXPECT_EQ(byResource("/Elsewhere/1",
                       R"({"@odata.type": "#Thermal.v1_7_0.Temperature"})"),
            "Cooling");
}

TEST(CategoryOf, UnheardOfTypeLeavesThePath) {
  EXPECT_EQ(byResource("/Systems/1/Memory/D1",
                       R"({"@odata.type": "#Hologram.v1_0_0.Hologram"})"),
            "Memory");
  EXPECT_EQ(byResource("/Systems/1/Memory/D1", R"({"@odata.type": 7})"),
            "Memory");
}

std::string bySensor(const std::string& properties) {
  return byResource(
      "/Chassis/1/Sensors/S",
      R"({"@odata.type": "#Sensor.v1_7_0.Sensor", )" + properties + "}");
}

TEST(CategoryOf, SensorsAreOfTheAreaOfTheirReading) {
  for (const std::string type :
       {"Temperature", "Humidity", "AirFlow", "AirFlowCMM", "Rotational",
        "LiquidFlow", "LiquidLevel", "Heat"}) {
    EXPECT_EQ(bySensor(R"("ReadingType": ")" + type + "\""), "Cooling") << type;
  }
  for (const std::string type :
       {"Voltage", "Current", "Power", "EnergykWh", "ChargeAh", "Frequency"}) {
    EXPECT_EQ(bySensor(R"("ReadingType": ")" + type + "\""), "Power") << type;
  }
  EXPECT_EQ(bySensor(R"("ReadingType": "Altitude", "ReadingUnits": "V")"),
            "System");
}

TEST(CategoryOf, UnitsStandInForTheReading) {
  for (const std::string unit : {"Cel", "RPM", "%"}) {
    EXPECT_EQ(bySensor(R"("ReadingUnits": ")" + unit + "\""), "Cooling");
  }
  for (const std::string unit : {"W", "V", "A", "Hz", "kW.h"}) {
    EXPECT_EQ(bySensor(R"("ReadingUnits": ")" + unit + "\""), "Power");
  }
  EXPECT_EQ(bySensor(R"("ReadingUnits": "m")"), "System");
  EXPECT_EQ(bySensor(R"("ReadingType": null)"), "System");
}

TEST(CategoryOf, UnreadSensorIsOfTheSystem) {
  EXPECT_EQ(byPath("/Chassis/1/Sensors/Inlet"), "System");
}

TEST(IsUnreadSensor, OnlySensorsThatWereNeverAskedForAre) {
  const auto unread = [](const redfish::Graph& graph, const char* link) {
    return isUnreadSensor(graph, *redfish::Uri::parse(link));
  };
  const redfish::Graph graph =
      graphOf({{"/redfish/v1/Chassis/1/Sensors/Gone", std::string(kMissing)}});
  EXPECT_TRUE(unread(graph, "/redfish/v1/Chassis/1/Sensors/Inlet"));
  EXPECT_FALSE(unread(graph, "/redfish/v1/Chassis/1/Sensors/Gone"));
  EXPECT_FALSE(unread(graph, "/redfish/v1/Chassis/1/Thermal/Sensors/X"));
  EXPECT_FALSE(unread(graph, "/redfish/v1/Elsewhere/1/Sensors/X"));
}

}  // namespace
}  // namespace devhealth
