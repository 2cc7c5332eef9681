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

TEST(PciFacts, OtherFunctionsAndBridgesAreLeftOut) {
  Folder folder;
  addFunction(folder, "0000:00:01.1", kNetwork);
  addFunction(folder, "0000:00:02.0", "0x060400");
  folder.link("/sys/bus/pci/devices/garbage", "nowhere");
  EXPECT_THAT(pciFacts(folder.root(), {}), IsEmpty());
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

TEST(IsAdapterClass, TellsAdaptersFromTheRest) {
  for (const unsigned base :
       {1U, 2U, 3U, 4U, 7U, 0xBU, 0xCU, 0xDU, 0x10U, 0x12U}) {
    EXPECT_TRUE(isAdapterClass(base << 16U)) << base;
  }
  for (const unsigned base : {0U, 5U, 6U, 8U, 9U, 0xAU, 0x11U, 0x13U, 0xFFU}) {
    EXPECT_FALSE(isAdapterClass(base << 16U)) << base;
  }
  EXPECT_FALSE(isAdapterClass(0x0C0500));
  EXPECT_TRUE(isAdapterClass(0x0C0330));
}

TEST(ParsePciAddress, TakesWholeAddressesOnly) {
  EXPECT_EQ(*parsePciAddress("0000:3b:1f.7"), (PciAddress{0, 0x3b, 0x1f, 7}));
  EXPECT_EQ(parsePciAddress("10000:01:00.0")->segment, 0x10000U);
  EXPECT_FALSE(parsePciAddress(""));
  EXPECT_FALSE(parsePciAddress("pci0000:3a"));
  EXPECT_FALSE(parsePciAddress("0000:3b:00"));
  EXPECT_FALSE(parsePciAddress("0000:3b:20.0"));
  EXPECT_FALSE(parsePciAddress("0000:3b:00.8"));
  EXPECT_FALSE(parsePciAddress("0000-3b:00.0"));
  EXPECT_FALSE(parsePciAddress("000g:3b:00.0"));
}

}  // namespace
}  // namespace local
