#include "suite/local/pci/pci_ids.h"

#include <gtest/gtest.h>

#include <string>

#include "suite/base/time_limit.h"

namespace local {
namespace {

constexpr char kFile[] =
    "# A list\n"
    "#\n"
    "\n"
    "10a0  Nordbrenn Networks\n"
    "\t0001  NB100 chip\n"
    "\t\t20b0 0007  Dual-port card\n"
    "\t\t10a0 0007  Own card\n"
    "\t0002  NB200 chip\n"
    "20b0  Halvorn\n"
    "\t0001  Other chip\n"
    "C 02  Network controller\n"
    "\t00  Ethernet controller\n"
    "30c0  Behind the classes\n";

PciNames namesOf(const PciIdentity& identity) {
  return PciIds(kFile).names(identity);
}

TEST(PciIdsNames, SubsystemUnderOneMakerGoesBeforeTheChip) {
  const PciNames names = namesOf({0x10a0, 1, 0x20b0, 7});
  EXPECT_EQ(names.manufacturer, "Halvorn");
  EXPECT_EQ(names.model, "Dual-port card");
}

TEST(PciIdsNames, SubsystemUnderSeveralMakersIsABoard) {
  const PciIds ids(
      "10a0  Nordbrenn\n\t0001  NB100\n\t\t20b0 0007  RX 7200\n"
      "\t\t20b0 0008  RX 7200 card\n\t\t20b0 0009  NB100 duo\n"
      "\t0002  NB200\n\t\t20b0 0009  NB100 duo\n"
      "20b0  Halvorn\n\t0003  HV3\n\t\t20b0 0001  RX 7200\n"
      "\t0004  NB100 duo\n");
  EXPECT_EQ(ids.names({0x10a0, 1, 0x20b0, 7}).model, "NB100");
  EXPECT_EQ(ids.names({0x10a0, 1, 0x20b0, 7}).manufacturer, "Nordbrenn");
  EXPECT_EQ(ids.names({0x20b0, 3, 0x20b0, 1}).model, "HV3");
  // Neither longer names nor those of chips count.
  EXPECT_EQ(ids.names({0x10a0, 1, 0x20b0, 8}).model, "RX 7200 card");
  EXPECT_EQ(ids.names({0x10a0, 1, 0x20b0, 9}).model, "NB100 duo");
  EXPECT_EQ(ids.names({0x10a0, 1, 0x20b0, 9}).manufacturer, "Halvorn");
}

TEST(PciIdsNames, NameOfTheMachineIsABoard) {
  SystemFacts system;
  system.product = "Dual-port card";
  const PciNames names =
      PciIds(kFile).names({0x10a0, 1, 0x20b0, 7}, MachineNames(system, {}));
  EXPECT_EQ(names.manufacturer, "Nordbrenn Networks");
  EXPECT_EQ(names.model, "NB100 chip");
}

TEST(PciIdsNames, ChipServesWhereTheSubsystemIsNotListed) {
  const PciNames names = namesOf({0x10a0, 1, 0x20b0, 8});
  EXPECT_EQ(names.manufacturer, "Nordbrenn Networks");
  EXPECT_EQ(names.model, "NB100 chip");
}

TEST(PciIdsNames, SubsystemsOfAnotherDeviceDoNotCount) {
  const PciNames names = namesOf({0x10a0, 2, 0x20b0, 7});
  EXPECT_EQ(names.model, "NB200 chip");
}

TEST(PciIdsNames, UnlistedDeviceHasItsVendorAlone) {
  const PciNames names = namesOf({0x10a0, 0xffff, 0, 0});
  EXPECT_EQ(names.manufacturer, "Nordbrenn Networks");
  EXPECT_EQ(names.model, "");
}

TEST(PciIdsNames, DevicesOfTheNextVendorDoNotCount) {
  const PciNames names = namesOf({0x20b0, 2, 0, 0});
  EXPECT_EQ(names.manufacturer, "Halvorn");
  EXPECT_EQ(names.model, "");
}

TEST(PciIdsNames, UnlistedVendorHasNone) {
  EXPECT_EQ(namesOf({0xffff, 1, 0, 0}).manufacturer, "");
}

TEST(PciIdsNames, ClassesAreNoVendors) {
  EXPECT_EQ(namesOf({0x30c0, 1, 0, 0}).manufacturer, "");
}

TEST(PciIdsNames, LinesThatAreNoEntriesAreSkipped) {
  const PciIds ids(
      "10\n\t\t\n\tzz\n10a0 one blank\nxyz0  Nobody\n10a0\n\t0001\n"
      "20b0  Halvorn\n\t\t10a0 0007  without device\n\t0001  Chip");
  EXPECT_EQ(ids.names({0x20b0, 1, 0x10a0, 7}).model, "Chip");
  EXPECT_EQ(ids.names({0x10a0, 1, 0, 0}).model, "");
}

TEST(PciIdsNames, ALineThatIsNoEntryEndsNoVendor) {
  const PciIds ids("10a0  Nordbrenn\n(checked)\n\t0001  NB100\n");
  EXPECT_EQ(ids.names({0x10a0, 1, 0, 0}).model, "NB100");
}

// A list with one line that has the name of a card so many times.
double stepsOfLine(std::size_t times) {
  std::string text = "10a0  Nordbrenn\n\t0001  NB100\n\t\t20b0 0007  A\n\t\t";
  text += "20b0 0008  " + std::string(times, 'A') + "\n";
  const PciIds ids(text);
  const auto before = base::stepsSoFar();
  EXPECT_EQ(ids.names({0x10a0, 1, 0x20b0, 7}).model, "A");
  return static_cast<double>(base::stepsSoFar() - before);
}

TEST(StepsOfPciIds, ALineIsReadOnceHoweverOftenItHasTheName) {
  EXPECT_LE(stepsOfLine(1000), stepsOfLine(100) * 2);
}

TEST(PciIdsNames, EmptyFileHasNone) {
  EXPECT_EQ(PciIds("").names({0x10a0, 1, 0, 0}).manufacturer, "");
}

}  // namespace
}  // namespace local
