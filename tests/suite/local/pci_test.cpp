#include "suite/local/pci/pci.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/suite/local/folder.h"

namespace local {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr char kNetwork[] = "0x020000";

// Adds a function below the ports given as "0000:00:01.0/".
void addFunction(Folder& folder, const std::string& address,
                 const std::string& classCode, const std::string& ports = "") {
  const std::string path = "devices/pci0000:00/" + ports + address;
  folder.file("/sys/" + path + "/class", classCode + "\n")
      .file("/sys/" + path + "/vendor", "0x10a0\n")
      .file("/sys/" + path + "/device", "0x0001\n")
      .file("/sys/" + path + "/subsystem_vendor", "0x20b0\n")
      .file("/sys/" + path + "/subsystem_device", "0x0007\n")
      .link("/sys/bus/pci/devices/" + address, "../../../" + path);
}

TEST(PciFacts, ReadsEveryField) {
  Folder folder;
  addFunction(folder, "0000:3b:00.0", kNetwork, "0000:00:01.0/");
  const std::string path = "/sys/devices/pci0000:00/0000:00:01.0/0000:3b:00.0";
  folder.link(path + "/driver", "../../../../bus/pci/drivers/nb");
  folder.file(path + "/vpd", std::string("\x90\x05\0SN\x02OK\x78", 9));
  folder.file("/usr/share/misc/pci.ids", "10a0  Nordbrenn\n\t0001  NB100\n");
  PciContext context;
  context.slots = {{"Slot 3", {0, 0, 1, 0}}};
  const auto facts = pciFacts(folder.root(), context);
  ASSERT_THAT(facts, SizeIs(1));
  EXPECT_EQ(facts[0].address, (PciAddress{0, 0x3b, 0, 0}));
  EXPECT_EQ(facts[0].vendorId, 0x10a0);
  EXPECT_EQ(facts[0].deviceId, 1);
  EXPECT_EQ(facts[0].manufacturer, "Nordbrenn");
  EXPECT_EQ(facts[0].model, "NB100");
  EXPECT_EQ(facts[0].slot, "Slot 3");
  EXPECT_EQ(facts[0].serial, "OK");
  EXPECT_TRUE(facts[0].driverBound);
}

TEST(PciFacts, OwnAddressGoesBeforeThePortsAbove) {
  Folder folder;
  addFunction(folder, "0000:3b:00.0", kNetwork, "0000:00:01.0/0000:3a:00.0/");
  PciContext context;
  context.slots = {{"top", {0, 0, 1, 0}}, {"near", {0, 0x3a, 0, 0}}};
  EXPECT_EQ(pciFacts(folder.root(), context).at(0).slot, "near");
  context.onboard = {{"LOM", {0, 0x3b, 0, 0}}};
  EXPECT_EQ(pciFacts(folder.root(), context).at(0).slot, "LOM");
  context.slots.push_back({"own", {0, 0x3b, 0, 0}});
  EXPECT_EQ(pciFacts(folder.root(), context).at(0).slot, "own");
}

TEST(PciFacts, FunctionsBesideTheFirstAreRead) {
  Folder folder;
  addFunction(folder, "0000:00:1f.0", "0x060100");
  addFunction(folder, "0000:00:1f.2", "0x010601");
  addFunction(folder, "0000:00:1f.6", kNetwork);
  folder.link("/sys/bus/pci/devices/garbage", "nowhere");
  const auto facts = pciFacts(folder.root(), {});
  ASSERT_THAT(facts, SizeIs(2));
  EXPECT_EQ(facts[0].address, (PciAddress{0, 0, 0x1f, 2}));
  EXPECT_EQ(facts[1].address, (PciAddress{0, 0, 0x1f, 6}));
  EXPECT_EQ(facts[1].deviceId, 1);
}

TEST(PciFacts, FunctionsWithoutAClassNeedADriver) {
  Folder folder;
  addFunction(folder, "0000:05:00.0", "0x000000");
  addFunction(folder, "0000:06:00.0", "0xff0000");
  folder.link("/sys/devices/pci0000:00/0000:06:00.0/driver", "../drivers/x");
  const auto facts = pciFacts(folder.root(), {});
  ASSERT_THAT(facts, SizeIs(1));
  EXPECT_EQ(facts[0].address.bus, 6);
}

TEST(PciFacts, SoundOfADisplayIsLeftOut) {
  Folder folder;
  addFunction(folder, "0000:05:00.0", "0x030000");
  addFunction(folder, "0000:05:00.1", "0x040300");
  EXPECT_THAT(pciFacts(folder.root(), {}), SizeIs(1));
}

TEST(PciFacts, MachineNameIsNoNameOfAFunction) {
  Folder folder;
  addFunction(folder, "0000:05:00.0", kNetwork);
  folder.file("/usr/share/misc/pci.ids",
              "10a0  Nordbrenn\n\t0001  NB100\n\t\t20b0 0007  RX 7200\n");
  EXPECT_EQ(pciFacts(folder.root(), {}).at(0).model, "RX 7200");
  PciContext context;
  SystemFacts system;
  system.product = "RX 7200";
  context.machine = MachineNames(system, {});
  EXPECT_EQ(pciFacts(folder.root(), context).at(0).model, "NB100");
}

TEST(PciFacts, VirtualFunctionsAreLeftOut) {
  Folder folder;
  addFunction(folder, "0000:03:10.0", kNetwork);
  folder.link("/sys/devices/pci0000:00/0000:03:10.0/physfn", "../0000:03:00.0");
  EXPECT_THAT(pciFacts(folder.root(), {}), IsEmpty());
}

TEST(PciFacts, OrderIsByAddress) {
  Folder folder;
  addFunction(folder, "10000:01:00.0", kNetwork);
  addFunction(folder, "0000:a0:00.0", kNetwork);
  addFunction(folder, "0000:09:00.0", kNetwork);
  const auto facts = pciFacts(folder.root(), {});
  ASSERT_THAT(facts, SizeIs(3));
  EXPECT_EQ(facts[0].address.bus, 0x09);
  EXPECT_EQ(facts[1].address.bus, 0xa0);
  EXPECT_EQ(facts[2].address.segment, 0x10000U);
}

TEST(PciFacts, ConfiguredNamesFileIsOfThisSystem) {
  Folder names;
  names.file("/my.ids", "10a0  Mine\n");
  Folder folder;
  addFunction(folder, "0000:09:00.0", kNetwork);
  PciContext context;
  context.idsFile = names.path() + "/my.ids";
  EXPECT_EQ(pciFacts(folder.root(), context).at(0).manufacturer, "Mine");
}

TEST(PciFacts, HwdataGoesBeforeMisc) {
  Folder folder;
  addFunction(folder, "0000:09:00.0", kNetwork);
  folder.file("/usr/share/misc/pci.ids", "10a0  Misc\n")
      .file("/usr/share/hwdata/pci.ids", "10a0  Hwdata\n");
  EXPECT_EQ(pciFacts(folder.root(), {}).at(0).manufacturer, "Hwdata");
}

TEST(PciFacts, WithoutNamesTheNumbersRemain) {
  Folder folder;
  addFunction(folder, "0000:09:00.0", kNetwork);
  const PciFacts facts = pciFacts(folder.root(), {}).at(0);
  EXPECT_EQ(facts.manufacturer, "");
  EXPECT_EQ(facts.vendorId, 0x10a0);
  EXPECT_FALSE(facts.driverBound);
}

}  // namespace
}  // namespace local
