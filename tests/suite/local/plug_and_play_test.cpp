#include "suite/local/pci/plug_and_play.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace local {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint32_t at(std::uint32_t device, std::uint32_t function) {
  return device << 16U | function;
}

PnpFunction networkCard() {
  PnpFunction card;
  card.place = {0x3b, at(0, 0), "PCI bus 59, device 0, function 0"};
  card.ids = {R"(PCI\VEN_10A0&DEV_0001&SUBSYS_000720B0&REV_03)",
              R"(PCI\VEN_10A0&DEV_0001&CC_020000)"};
  card.manufacturer = "Nordbrenn";
  card.description = "Nordbrenn NB100";
  card.driverBound = true;
  return card;
}

TEST(PnpPciFacts, ReadsEveryField) {
  const auto facts = pciFacts({networkCard()}, {});
  ASSERT_THAT(facts, SizeIs(1));
  EXPECT_EQ(facts[0].address, (PciAddress{0, 0x3b, 0, 0}));
  EXPECT_EQ(facts[0].vendorId, 0x10a0);
  EXPECT_EQ(facts[0].deviceId, 1);
  EXPECT_EQ(facts[0].manufacturer, "Nordbrenn");
  EXPECT_EQ(facts[0].model, "Nordbrenn NB100");
  EXPECT_TRUE(facts[0].driverBound);
}

TEST(PnpPciFacts, SlotIsThatOfTheFunctionOrOfAPortAbove) {
  PnpFunction card = networkCard();
  card.above = {{0x3a, at(0, 0), ""}, {0, at(1, 0), ""}};
  PciContext context;
  context.slots = {{"Slot 3", {0, 0, 1, 0}}};
  EXPECT_EQ(pciFacts({card}, context).at(0).slot, "Slot 3");
  context.onboard = {{"LOM", {0, 0x3b, 0, 0}}};
  EXPECT_EQ(pciFacts({card}, context).at(0).slot, "LOM");
}

TEST(PnpPciFacts, BridgesAndUnknownClassesAndPlacesAreLeftOut) {
  PnpFunction bridge = networkCard();
  bridge.ids = {R"(PCI\VEN_10A0&DEV_0001&CC_060400)"};
  PnpFunction unknown = networkCard();
  unknown.ids = {R"(PCI\VEN_10A0&DEV_0001&CC_02)", "", "CC_", "SUBSYS_1"};
  PnpFunction nowhere = networkCard();
  nowhere.place = {};
  EXPECT_THAT(pciFacts({bridge, unknown, nowhere}, {}), IsEmpty());
}

TEST(PnpPciFacts, LowestFunctionOfEachBaseClassIsShown) {
  PnpFunction second = networkCard();
  second.place.address = at(0, 1);
  second.description = "second port";
  PnpFunction storage = networkCard();
  storage.place.address = at(0, 2);
  storage.ids = {R"(PCI\VEN_10A0&DEV_0002&CC_010400)"};
  const auto facts = pciFacts({storage, second, networkCard()}, {});
  ASSERT_THAT(facts, SizeIs(2));
  EXPECT_EQ(facts[0].model, "Nordbrenn NB100");
  EXPECT_EQ(facts[1].deviceId, 2);
}

TEST(PnpPciFacts, OrderIsByAddress) {
  PnpFunction first = networkCard();
  first.place = {0x03, at(2, 0), ""};
  first.description = "first";
  const auto facts = pciFacts({networkCard(), first}, {});
  EXPECT_EQ(facts.at(0).model, "first");
}

TEST(PnpAddressOf, SegmentStandsAboveTheBus) {
  EXPECT_EQ(addressOf({0x13b, at(31, 7), ""}), (PciAddress{1, 0x3b, 31, 7}));
}

TEST(PnpAddressOf, LocationServesInAnyLanguage) {
  EXPECT_EQ(addressOf({{}, {}, "PCI-Bus 59, Gerät 2, Funktion 1"}),
            (PciAddress{0, 59, 2, 1}));
  EXPECT_EQ(addressOf({{},
                       {},
                       "@system32\\drivers\\pci.sys,#65536;PCI bus %1, "
                       "device %2, function %3;(3,0,0)"}),
            (PciAddress{0, 3, 0, 0}));
}

TEST(PnpAddressOf, ImpossiblePlacesAreNone) {
  EXPECT_FALSE(addressOf({0, at(32, 0), ""}));
  EXPECT_FALSE(addressOf({0, at(0, 8), ""}));
  EXPECT_FALSE(addressOf({{}, {}, "bus 3, device 0"}));
  EXPECT_FALSE(addressOf({{}, {}, "1 2 99999999999999999999"}));
}

}  // namespace
}  // namespace local
