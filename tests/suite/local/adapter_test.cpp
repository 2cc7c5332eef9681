#include "suite/local/pci/adapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace local {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kSata = 0x010601;
constexpr std::uint32_t kNetwork = 0x020000;
constexpr std::uint32_t kDisplay = 0x030000;
constexpr std::uint32_t kSound = 0x040300;
constexpr std::uint32_t kSerial = 0x070002;
constexpr std::uint32_t kManagementEngine = 0x078000;

PciFunction functionAt(const PciAddress& address, std::uint32_t classCode,
                       std::uint16_t vendor = 0x10a0) {
  PciFunction function;
  function.address = address;
  function.classCode = classCode;
  function.identity.vendor = vendor;
  return function;
}

TEST(IsAdapter, TellsAdaptersFromTheRest) {
  for (const unsigned base :
       {1U, 2U, 3U, 4U, 7U, 0xBU, 0xCU, 0xDU, 0x10U, 0x12U}) {
    EXPECT_TRUE(isAdapter(base << 16U, false)) << base;
  }
  for (const unsigned base : {5U, 6U, 8U, 9U, 0xAU, 0x11U, 0x13U}) {
    EXPECT_FALSE(isAdapter(base << 16U, true)) << base;
  }
}

TEST(IsAdapter, UsbAndManagementFunctionsAreNone) {
  EXPECT_FALSE(isAdapter(0x0C0330, true));
  EXPECT_FALSE(isAdapter(0x0C0500, true));
  EXPECT_FALSE(isAdapter(kManagementEngine, true));
  EXPECT_TRUE(isAdapter(kSerial, false));
}

TEST(IsAdapter, CxlMemoryIsOne) {
  EXPECT_TRUE(isAdapter(0x050210, false));
  EXPECT_FALSE(isAdapter(0x050000, true));
}

TEST(IsAdapter, WithoutAClassTheDriverDecides) {
  for (const std::uint32_t code : {0x000000U, 0xFF0000U}) {
    EXPECT_TRUE(isAdapter(code, true)) << code;
    EXPECT_FALSE(isAdapter(code, false)) << code;
  }
}

TEST(ChooseAdapters, EachBaseClassOfADeviceHasItsLowestFunction) {
  // As listed by the kernel: in no order.
  EXPECT_THAT(chooseAdapters({functionAt({0, 0x3b, 0, 1}, kNetwork),
                              functionAt({0, 0x3b, 0, 3}, kSata),
                              functionAt({0, 0x3b, 0, 0}, kNetwork),
                              functionAt({0, 0x3b, 0, 2}, kSata)}),
              ElementsAre(2, 3));
}

TEST(ChooseAdapters, DevicesAreToldApartBySegmentBusAndDevice) {
  EXPECT_THAT(chooseAdapters({functionAt({1, 0x3b, 0, 0}, kNetwork),
                              functionAt({0, 0x3c, 0, 0}, kNetwork),
                              functionAt({0, 0x3b, 1, 0}, kNetwork),
                              functionAt({0, 0x3b, 0, 0}, kNetwork)}),
              ElementsAre(3, 2, 1, 0));
}

TEST(ChooseAdapters, DeviceWithoutFunction0IsShown) {
  EXPECT_THAT(chooseAdapters({functionAt({0, 0x3b, 0, 1}, kSata)}),
              ElementsAre(0));
}

TEST(ChooseAdapters, LowestFunctionIsThatOfAnAdapter) {
  EXPECT_THAT(chooseAdapters({functionAt({0, 0, 0x16, 0}, kManagementEngine),
                              functionAt({0, 0, 0x16, 3}, kSerial)}),
              ElementsAre(1));
  EXPECT_THAT(chooseAdapters({functionAt({0, 0, 1, 0}, 0x060400)}), IsEmpty());
}

TEST(ChooseAdapters, SoundBesideADisplayOfTheSameMakerIsLeftOut) {
  const PciFunction display = functionAt({0, 5, 0, 0}, kDisplay);
  const PciFunction sound = functionAt({0, 5, 0, 1}, kSound);
  EXPECT_THAT(chooseAdapters({sound, display}), ElementsAre(1));
  EXPECT_THAT(chooseAdapters({sound}), ElementsAre(0));
  EXPECT_THAT(
      chooseAdapters({display, functionAt({0, 5, 0, 1}, kSound, 0x20b0)}),
      ElementsAre(0, 1));
  EXPECT_THAT(chooseAdapters({display, functionAt({0, 6, 0, 1}, kSound)}),
              ElementsAre(0, 1));
  EXPECT_THAT(chooseAdapters(
                  {display, sound, functionAt({0, 5, 0, 6}, kSound, 0x20b0)}),
              ElementsAre(0, 2));
}

PciFunction cardBehindAPort() {
  PciFunction function = functionAt({0, 0x3b, 0, 1}, kNetwork);
  function.above = {{0, 0x3a, 0, 0}, {0, 0, 1, 0}};
  return function;
}

TEST(DesignationOf, SlotOfTheDeviceNamesEveryFunction) {
  PciContext context;
  context.slots = {{"Slot 3", {0, 0x3b, 0, 0}}, {"top", {0, 0, 1, 0}}};
  EXPECT_EQ(designationOf(cardBehindAPort(), context), "Slot 3");
  context.slots.push_back({"own", {0, 0x3b, 0, 1}});
  EXPECT_EQ(designationOf(cardBehindAPort(), context), "own");
}

TEST(DesignationOf, PortIsComparedInFull) {
  PciContext context;
  context.slots = {{"beside", {0, 0, 1, 1}}};
  EXPECT_EQ(designationOf(cardBehindAPort(), context), "");
}

TEST(DesignationOf, PortNamesNothingThatIsOnTheBoard) {
  PciContext context;
  context.slots = {{"Slot 3", {0, 0, 1, 0}}};
  EXPECT_EQ(designationOf(cardBehindAPort(), context), "Slot 3");
  context.onboard = {{"", {0, 0x3b, 0, 0}}};
  EXPECT_EQ(designationOf(cardBehindAPort(), context), "");
  context.onboard = {{"LAN 2", {0, 0x3b, 0, 1}}};
  EXPECT_EQ(designationOf(cardBehindAPort(), context), "LAN 2");
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
