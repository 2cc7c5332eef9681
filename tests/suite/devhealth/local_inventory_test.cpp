#include "suite/devhealth/inventory/local_inventory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "suite/devhealth/inventory/printed_records.h"

namespace devhealth {
namespace {

using testing::IsEmpty;

local::SystemFacts system() {
  return {"Halvorn",
          "RX 200",
          "v3",
          "SN-1",
          "RX2-SKU",
          "RX",
          "01112233-4455-6677-8899-aabbccddeeff"};
}

local::BoardFacts board() { return {"Boardmaker", "MB-7", "rev B", "BSN-7"}; }

TEST(SystemBoardOf, TakesTheSystem) {
  const auto record = printed(systemOf(system(), board()));
  EXPECT_EQ(record.machineName, "Halvorn RX 200");
  EXPECT_EQ(record.machineTypeModel, "RX2-SKU");
  EXPECT_EQ(record.serialNumber, "SN-1");
  EXPECT_EQ(record.uuid, "01112233-4455-6677-8899-aabbccddeeff");
}

TEST(SystemBoardOf, MakerIsNotRepeated) {
  local::SystemFacts facts = system();
  facts.product = "HALVORN RX 200";
  EXPECT_EQ(printed(systemOf(facts, {})).machineName, "HALVORN RX 200");
}

TEST(SystemBoardOf, PlaceholdersFallBack) {
  local::SystemFacts facts = system();
  facts.sku = "Default string";
  EXPECT_EQ(printed(systemOf(facts, board())).machineTypeModel, "RX");
  facts.family = "To be filled by O.E.M.";
  EXPECT_EQ(printed(systemOf(facts, board())).machineTypeModel, "v3");
  facts.version = "Not Specified";
  EXPECT_EQ(printed(systemOf(facts, board())).machineTypeModel, "MB-7");
  facts.serial = " ";
  EXPECT_EQ(printed(systemOf(facts, board())).serialNumber, "BSN-7");
  facts.product = "N/A";
  EXPECT_EQ(printed(systemOf(facts, board())).machineName, "Boardmaker MB-7");
}

TEST(SystemBoardOf, FillersAreNoValues) {
  local::SystemFacts facts = system();
  facts.product = "Undefined";
  facts.sku = "Type1Sku0";
  facts.family = "...";
  facts.version = "Not Provided";
  facts.serial = "System Serial Number";
  const auto record = printed(systemOf(facts, board()));
  EXPECT_EQ(record.machineName, "Boardmaker MB-7");
  EXPECT_EQ(record.machineTypeModel, "MB-7");
  EXPECT_EQ(record.serialNumber, "BSN-7");
}

TEST(SystemBoardOf, SkuOfSeveralPartsIsTheFirst) {
  local::SystemFacts facts = system();
  facts.sku = "SKU=RX2-7;ModelName=RX 200";
  EXPECT_EQ(printed(systemOf(facts, board())).machineTypeModel, "RX2-7");
  facts.sku = "SKU=NotProvided;ModelName=RX 200";
  EXPECT_EQ(printed(systemOf(facts, board())).machineTypeModel, "RX");
}

TEST(SystemBoardOf, NothingKnownIsEmpty) {
  const auto record = printed(systemOf({}, {}));
  EXPECT_EQ(record.machineName, "");
  EXPECT_EQ(record.machineTypeModel, "");
  EXPECT_EQ(record.serialNumber, "");
  EXPECT_EQ(record.uuid, "");
}

TEST(ProcessorsOf, TakesEveryField) {
  local::ProcessorFacts facts;
  facts.socket = "CPU1";
  facts.version = "Corvex 9000  ";
  facts.family = "Intel Xeon";
  facts.currentMhz = 2600;
  facts.maxMhz = 4000;
  facts.state = local::ProcessorState::kEnabled;
  const auto record = printed(processorsOf({facts})).at(0);
  EXPECT_EQ(record.name, "CPU1");
  EXPECT_EQ(record.family, "Corvex 9000");
  EXPECT_EQ(record.currentClockSpeed, "2600");
  EXPECT_EQ(record.maxClockSpeed, "4000");
  EXPECT_EQ(record.healthState, "OK");
}

TEST(ProcessorsOf, FamilyServesWithoutBrandText) {
  local::ProcessorFacts facts;
  facts.family = "ARMv8";
  EXPECT_EQ(printed(processorsOf({facts})).at(0).family, "ARMv8");
  EXPECT_EQ(printed(processorsOf({facts})).at(0).currentClockSpeed, "");
}

TEST(ProcessorsOf, HealthFollowsTheState) {
  const auto healthWith = [](local::ProcessorState state) {
    local::ProcessorFacts facts;
    facts.state = state;
    return printed(processorsOf({facts})).at(0).healthState;
  };
  EXPECT_EQ(healthWith(local::ProcessorState::kDisabledByUser), "OK");
  EXPECT_EQ(healthWith(local::ProcessorState::kIdle), "OK");
  EXPECT_EQ(healthWith(local::ProcessorState::kFailed), "Critical");
  EXPECT_EQ(healthWith(local::ProcessorState::kUnknown), "Unknown");
}

TEST(ProcessorsOf, SocketsOfOneNameAreToldApart) {
  local::ProcessorFacts facts;
  facts.socket = "CPU";
  const auto records = printed(processorsOf({facts, facts}));
  EXPECT_EQ(records.at(0).name, "CPU 1");
  EXPECT_EQ(records.at(1).name, "CPU 2");
}

local::FanFacts fan() {
  local::FanFacts facts;
  facts.chip = "fanctl";
  facts.input = "fan1";
  facts.label = "Rear";
  facts.targetRpm = 5000;
  facts.measuredRpm = 4980;
  return facts;
}

TEST(FansOf, TakesTheMeasuredSpeed) {
  const auto record = printed(fansOf({fan()})).at(0);
  EXPECT_EQ(record.elementName, "Rear");
  EXPECT_EQ(record.desiredSpeed, "4980 RPM");
  EXPECT_EQ(record.healthState, "OK");
}

TEST(FansOf, FanThatStandsStillIsMeasured) {
  local::FanFacts facts = fan();
  facts.targetRpm = 27000;
  facts.measuredRpm = 0;
  EXPECT_EQ(printed(fansOf({facts})).at(0).desiredSpeed, "0 RPM");
}

TEST(FansOf, TargetServesWhereNothingIsMeasured) {
  local::FanFacts facts = fan();
  facts.measuredRpm.reset();
  EXPECT_EQ(printed(fansOf({facts})).at(0).desiredSpeed, "5000 RPM");
  facts.measuredRpm = -1;
  EXPECT_EQ(printed(fansOf({facts})).at(0).desiredSpeed, "5000 RPM");
  facts.targetRpm = 0;
  EXPECT_EQ(printed(fansOf({facts})).at(0).desiredSpeed, "");
}

TEST(FansOf, LabelsOfOneNameGetChipAndNumber) {
  local::FanFacts other = fan();
  other.chip = "aux";
  const auto records = printed(fansOf({fan(), other}));
  EXPECT_EQ(records.at(0).elementName, "Rear aux fan1");
  EXPECT_EQ(records.at(1).elementName, "Rear fanctl fan1");
}

TEST(FansOf, ChipAndNumberServeWithoutLabel) {
  local::FanFacts facts = fan();
  facts.label = "";
  EXPECT_EQ(printed(fansOf({facts})).at(0).elementName, "fanctl fan1");
}

TEST(FansOf, HealthFollowsTheState) {
  local::FanFacts facts = fan();
  facts.state = local::FanState::kAlarm;
  EXPECT_EQ(printed(fansOf({facts})).at(0).healthState, "Warning");
  facts.state = local::FanState::kFault;
  EXPECT_EQ(printed(fansOf({facts})).at(0).healthState, "Critical");
}

local::MemoryFacts module() {
  local::MemoryFacts facts;
  facts.locator = "DIMM A1";
  facts.bank = "Node 0";
  facts.partNumber = "OM32G   ";
  facts.serial = "M-1";
  facts.manufacturer = "Ostrava";
  facts.type = "DDR5";
  facts.maxSpeed = 4800;
  return facts;
}

TEST(DimmsOf, TakesEveryField) {
  const auto record = printed(dimmsOf({module()})).at(0);
  EXPECT_EQ(record.description, "DIMM A1");
  EXPECT_EQ(record.partNumber, "OM32G");
  EXPECT_EQ(record.serialNumber, "M-1");
  EXPECT_EQ(record.manufacturer, "Ostrava");
  EXPECT_EQ(record.model, "DDR5");
  EXPECT_EQ(record.maxMemorySpeed, "4800 MT/s");
}

TEST(DimmsOf, RepeatedPlacesGetTheirBank) {
  local::MemoryFacts other = module();
  other.bank = "Node 1";
  const auto records = printed(dimmsOf({module(), other}));
  EXPECT_EQ(records.at(0).description, "DIMM A1 Node 0");
  EXPECT_EQ(records.at(1).description, "DIMM A1 Node 1");
}

TEST(DimmsOf, RepeatedBanksGetANumber) {
  const auto records = printed(dimmsOf({module(), module()}));
  EXPECT_EQ(records.at(0).description, "DIMM A1 Node 0 1");
  EXPECT_EQ(records.at(1).description, "DIMM A1 Node 0 2");
}

TEST(DimmsOf, RowsAreInNaturalOrder) {
  local::MemoryFacts second = module();
  second.locator = "DIMM A10";
  local::MemoryFacts first = module();
  first.locator = "DIMM A2";
  const auto records = printed(dimmsOf({second, first}));
  EXPECT_EQ(records.at(0).description, "DIMM A2");
  EXPECT_EQ(records.at(1).description, "DIMM A10");
}

TEST(DimmsOf, FillersAreNoValues) {
  local::MemoryFacts facts = module();
  facts.partNumber = "PartNum0";
  facts.serial = "00000000";
  facts.manufacturer = "Undefined";
  const auto record = printed(dimmsOf({facts})).at(0);
  EXPECT_EQ(record.partNumber, "");
  EXPECT_EQ(record.serialNumber, "");
  EXPECT_EQ(record.manufacturer, "");
}

TEST(DimmsOf, CodeOfAMakerBecomesItsName) {
  local::MemoryFacts facts = module();
  facts.manufacturer = "0xCE00";
  EXPECT_EQ(printed(dimmsOf({facts})).at(0).manufacturer, "Samsung");
}

TEST(DimmsOf, BankServesWithoutPlace) {
  local::MemoryFacts facts = module();
  facts.locator = "Not Specified";
  EXPECT_EQ(printed(dimmsOf({facts})).at(0).description, "Node 0");
}

TEST(DimmsOf, UnknownSpeedIsEmpty) {
  local::MemoryFacts facts = module();
  facts.maxSpeed.reset();
  EXPECT_EQ(printed(dimmsOf({facts})).at(0).maxMemorySpeed, "");
}

TEST(PowersOf, TakesEveryField) {
  local::SupplyFacts facts;
  facts.location = "Bay 1";
  facts.name = "PSU1";
  facts.capacityWatts = 800;
  facts.state = local::SupplyState::kOk;
  const auto record = printed(powersOf({facts})).at(0);
  EXPECT_EQ(record.elementName, "PSU1");
  EXPECT_EQ(record.totalOutputPower, "800 W");
  EXPECT_EQ(record.healthState, "OK");
}

TEST(PowersOf, LocationServesWithoutName) {
  local::SupplyFacts facts;
  facts.location = "Bay 1";
  const auto record = printed(powersOf({facts})).at(0);
  EXPECT_EQ(record.elementName, "Bay 1");
  EXPECT_EQ(record.totalOutputPower, "");
  EXPECT_EQ(record.healthState, "Unknown");
}

TEST(PowersOf, HealthFollowsTheState) {
  local::SupplyFacts facts;
  facts.state = local::SupplyState::kNonCritical;
  EXPECT_EQ(printed(powersOf({facts})).at(0).healthState, "Warning");
  facts.state = local::SupplyState::kCritical;
  EXPECT_EQ(printed(powersOf({facts})).at(0).healthState, "Critical");
}

TEST(PowersOf, UnpluggedIsAWarningUnlessItIsWorse) {
  const auto healthWith = [](local::SupplyState state) {
    local::SupplyFacts facts;
    facts.state = state;
    facts.unplugged = true;
    return printed(powersOf({facts})).at(0).healthState;
  };
  EXPECT_EQ(healthWith(local::SupplyState::kOk), "Warning");
  EXPECT_EQ(healthWith(local::SupplyState::kUnknown), "Warning");
  EXPECT_EQ(healthWith(local::SupplyState::kNonCritical), "Warning");
  EXPECT_EQ(healthWith(local::SupplyState::kCritical), "Critical");
}

TEST(PowersOf, SuppliesOfOneNameAreToldApartByTheirPlaceOrANumber) {
  local::SupplyFacts supply;
  supply.name = "PWR SPLY,800W";
  supply.location = "Bay 2";
  local::SupplyFacts other = supply;
  other.location = "Bay 1";
  auto records = printed(powersOf({supply, other}));
  EXPECT_EQ(records.at(0).elementName, "PWR SPLY,800W Bay 1");
  EXPECT_EQ(records.at(1).elementName, "PWR SPLY,800W Bay 2");
  other.location = supply.location = "To Be Filled By O.E.M.";
  records = printed(powersOf({supply, other}));
  EXPECT_EQ(records.at(0).elementName, "PWR SPLY,800W 1");
  EXPECT_EQ(records.at(1).elementName, "PWR SPLY,800W 2");
}

local::PciFacts adapter() {
  local::PciFacts facts;
  facts.address = {0, 0x3b, 0, 0};
  facts.vendorId = 0x10a0;
  facts.deviceId = 1;
  facts.manufacturer = "Nordbrenn";
  facts.model = "NB100";
  facts.slot = "Slot 3";
  facts.serial = "SN-9";
  facts.partNumber = "NB-200";
  facts.driverBound = true;
  return facts;
}

TEST(PciAdaptersOf, TakesEveryField) {
  const auto record = printed(pciAdaptersOf({adapter()})).at(0);
  EXPECT_EQ(record.description, "Slot 3 NB100");
  EXPECT_EQ(record.tag, "0000:3b:00.0");
  EXPECT_EQ(record.manufacturer, "Nordbrenn");
  EXPECT_EQ(record.model, "NB100");
  EXPECT_EQ(record.serialNumber, "SN-9");
  EXPECT_EQ(record.partNumber, "NB-200");
  EXPECT_EQ(record.sku, "");
  EXPECT_EQ(record.operationalStatus, "Enabled");
}

TEST(PciAdaptersOf, ModelServesWithoutSlot) {
  local::PciFacts facts = adapter();
  facts.slot = "";
  EXPECT_EQ(printed(pciAdaptersOf({facts})).at(0).description, "NB100");
}

TEST(PciAdaptersOf, IdsServeWithoutAnyName) {
  local::PciFacts facts = adapter();
  facts.slot = facts.model = "";
  facts.driverBound = false;
  EXPECT_EQ(printed(pciAdaptersOf({facts})).at(0).description,
            "PCI device 10a0:0001");
  EXPECT_EQ(printed(pciAdaptersOf({facts})).at(0).operationalStatus,
            "Disabled");
}

TEST(PciAdaptersOf, RowsAreInNaturalOrderOfTheirDescription) {
  local::PciFacts second = adapter();
  second.slot = "Slot 10";
  second.address.bus = 1;
  const auto records = printed(pciAdaptersOf({second, adapter()}));
  EXPECT_EQ(records.at(0).tag, "0000:3b:00.0");
  EXPECT_EQ(records.at(1).tag, "0000:01:00.0");
}

TEST(PciAdaptersOf, WideSegmentsAreWhole) {
  local::PciFacts facts = adapter();
  facts.address.segment = 0x10000;
  EXPECT_EQ(printed(pciAdaptersOf({facts})).at(0).tag, "10000:3b:00.0");
}

TEST(LocalInventory, HostileTextsAreCleaned) {
  local::MemoryFacts facts = module();
  facts.locator = "A\x1b[2J\n1";
  facts.manufacturer = "\xff\xfe";
  const auto record = printed(dimmsOf({facts})).at(0);
  EXPECT_EQ(record.description, "A [2J 1");
  EXPECT_EQ(record.manufacturer, "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(LocalInventory, NoPartsNoRecords) {
  EXPECT_THAT(printed(processorsOf({})), IsEmpty());
  EXPECT_THAT(printed(fansOf({})), IsEmpty());
  EXPECT_THAT(printed(dimmsOf({})), IsEmpty());
  EXPECT_THAT(printed(powersOf({})), IsEmpty());
  EXPECT_THAT(printed(pciAdaptersOf({})), IsEmpty());
}

}  // namespace
}  // namespace devhealth
