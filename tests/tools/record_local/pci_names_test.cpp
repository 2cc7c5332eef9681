#include "suite/local/recording/pci_names.h"

#include <gtest/gtest.h>

namespace local {
namespace {

constexpr char kList[] =
    "# A list\n"
    "\n"
    "10a0  Nordbrenn\n"
    "\t0001  NB100\n"
    "\t\t20b0 0007  Server board\n"
    "\t0002  NB200\n"
    "20b0  Halvorn\n"
    "\t0003  HV3\n"
    "30c0  Quarrel\n"
    "\t0004  QS4\n"
    "\t0005  QS5\n"
    "\t\t20b0 0009  Server board\n"
    "\t\t20b0 000a  Another board\n"
    "\t0006  Server board\n"
    "C 02  Network controller\n"
    "\t00  Ethernet controller\n";

TEST(NamesOf, VendorsOfChipsAndSubsystemsAreKept) {
  EXPECT_EQ(namesOf(kList, {{0x10a0, 2, 0x20b0, 1}}),
            "10a0  Nordbrenn\n"
            "\t0001  NB100\n"
            "\t\t20b0 0007  Server board\n"
            "\t0002  NB200\n"
            "20b0  Halvorn\n"
            "\t0003  HV3\n");
}

TEST(NamesOf, OtherSubsystemsOfAnOwnNameAreKept) {
  EXPECT_EQ(namesOf(kList, {{0x10a0, 1, 0x20b0, 7}}),
            "10a0  Nordbrenn\n"
            "\t0001  NB100\n"
            "\t\t20b0 0007  Server board\n"
            "\t0002  NB200\n"
            "20b0  Halvorn\n"
            "\t0003  HV3\n"
            "30c0  Quarrel\n"
            "\t0005  QS5\n"
            "\t\t20b0 0009  Server board\n");
}

TEST(NamesOf, NothingIsKeptForOthers) {
  EXPECT_EQ(namesOf(kList, {{0xffff, 1, 0xffff, 1}}), "");
  EXPECT_EQ(namesOf("", {{0x10a0, 1, 0x20b0, 7}}), "");
}

TEST(NamesOf, LinesThatAreNoEntriesAreSkipped) {
  EXPECT_EQ(namesOf("\t\t\n10\n10a0\n\t\t\t\txyz\n10a0  Nordbrenn",
                    {{0x10a0, 1, 0, 0}}),
            "10a0  Nordbrenn");
}

}  // namespace
}  // namespace local
