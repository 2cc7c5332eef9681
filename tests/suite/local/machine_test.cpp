#include "suite/local/machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/suite/local/folder.h"
#include "tests/suite/local/host_interface_builder.h"

namespace local {
namespace {

using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr char kTables[] = "/sys/firmware/dmi/tables/";

void addTable(Folder& folder, const std::vector<Structure>& structures) {
  const std::string table = tableOf(structures);
  folder.file(std::string(kTables) + "DMI", table)
      .file(std::string(kTables) + "smbios_entry_point",
            entryPoint64(3, 3, table.size()));
}

Structure processor() {
  return Structure(4, 0x30).byte(0x05, 3).byte(0x18, 0x41).word(0x14, 4000);
}

TEST(Machine, ReadsTheTable) {
  Folder folder;
  addTable(folder,
           {Structure(1, 0x1B).text(5, "RX"), Structure(2, 0x0F).text(5, "MB"),
            processor(), Structure(17, 0x28).word(0x0C, 1024),
            Structure(39, 0x16).text(0x06, "PSU").word(0x0E, 2),
            hostInterface(usbDevice(1, 2), {serviceRecord()})});
  Machine machine(folder.root());
  EXPECT_EQ(machine.table(), Access::kRead);
  EXPECT_THAT(machine.defects(), IsEmpty());
  EXPECT_EQ(machine.system().product, "RX");
  EXPECT_EQ(machine.board().product, "MB");
  EXPECT_THAT(machine.processors(), SizeIs(1));
  EXPECT_THAT(machine.memory(), SizeIs(1));
  EXPECT_THAT(machine.supplies(), SizeIs(1));
  EXPECT_THAT(machine.hostInterfaces(), SizeIs(1));
  EXPECT_TRUE(machine.describesItself());
}

TEST(Machine, PackageSpeedGoesBeforeTheSocketLimit) {
  Folder folder;
  addTable(folder, {processor()});
  const std::string cpu = "/sys/devices/system/cpu/cpu0";
  folder.file(cpu + "/topology/physical_package_id", "0\n")
      .file(cpu + "/cpufreq/cpuinfo_max_freq", "3700000\n");
  EXPECT_EQ(Machine(folder.root()).processors().at(0).maxMhz, 3700U);
}

TEST(Machine, SocketLimitStandsWherePackagesAreNotAsManyAsSockets) {
  Folder folder;
  addTable(folder, {processor(), processor()});
  const std::string cpu = "/sys/devices/system/cpu/cpu0";
  folder.file(cpu + "/topology/physical_package_id", "0\n")
      .file(cpu + "/cpufreq/cpuinfo_max_freq", "3700000\n");
  EXPECT_EQ(Machine(folder.root()).processors().at(0).maxMhz, 4000U);
}

TEST(Machine, WithoutTableTheKernelsTextsServe) {
  Folder folder;
  const std::string id = "/sys/class/dmi/id/";
  folder.file(id + "sys_vendor", "Halvorn\n")
      .file(id + "product_name", "RX 200\n")
      .file(id + "product_sku", "SKU-1\n")
      .file(id + "board_name", "MB\n");
  Machine machine(folder.root());
  EXPECT_EQ(machine.table(), Access::kMissing);
  EXPECT_EQ(machine.system().manufacturer, "Halvorn");
  EXPECT_EQ(machine.system().product, "RX 200");
  EXPECT_EQ(machine.system().sku, "SKU-1");
  EXPECT_EQ(machine.system().serial, "");
  EXPECT_EQ(machine.board().product, "MB");
  EXPECT_THAT(machine.processors(), IsEmpty());
  EXPECT_TRUE(machine.describesItself());
}

TEST(Machine, UuidOfTheKernelIsInLowerCase) {
  Folder folder;
  folder.file("/sys/class/dmi/id/product_uuid",
              "01112233-4455-6677-8899-AABBCCDDEEFF\n");
  EXPECT_EQ(Machine(folder.root()).system().uuid,
            "01112233-4455-6677-8899-aabbccddeeff");
}

TEST(Machine, NothingAtAllDescribesNothing) {
  const Folder folder;
  Machine machine(folder.root());
  EXPECT_FALSE(machine.describesItself());
  EXPECT_EQ(machine.system().product, "");
  EXPECT_THAT(machine.fans(), IsEmpty());
  EXPECT_THAT(machine.adapters(), IsEmpty());
}

TEST(Machine, PciBusAloneDescribesIt) {
  Folder folder;
  folder.folder("/sys/bus/pci/devices");
  EXPECT_TRUE(Machine(folder.root()).describesItself());
}

TEST(Machine, DefectsOfTheTableAreTold) {
  Folder folder;
  addTable(folder, {processor()});
  folder.file(std::string(kTables) + "smbios_entry_point", "nonsense");
  Machine machine(folder.root());
  EXPECT_THAT(machine.defects(), Not(IsEmpty()));
  EXPECT_THAT(machine.processors(), SizeIs(1));
}

TEST(Machine, SlotsNameTheAdapters) {
  Folder folder;
  addTable(
      folder,
      {Structure(9, 0x11).text(0x04, "Slot 3").byte(0x0F, 0x3B).byte(0x10, 0)});
  folder.file("/sys/bus/pci/devices/0000:3b:00.0/class", "0x020000\n");
  EXPECT_EQ(Machine(folder.root()).adapters().at(0).slot, "Slot 3");
}

}  // namespace
}  // namespace local
