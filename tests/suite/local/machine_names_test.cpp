#include "suite/local/facts/machine_names.h"

#include <gtest/gtest.h>

namespace local {
namespace {

MachineNames names() {
  SystemFacts system;
  system.product = "RX 7200 -[HV01]-";
  system.version = "pc-q9-7.2";
  system.family = "RX";
  system.sku = "SKU7";
  BoardFacts board;
  board.product = "MB-7200";
  board.version = "B2";
  return {system, board};
}

TEST(MachineNames, ContainEveryNameOfSystemAndBoard) {
  for (const char* name :
       {"RX 7200 -[HV01]-", "pc-q9-7.2", "RX", "SKU7", "MB-7200", "B2"}) {
    EXPECT_TRUE(names().contain(name)) << name;
  }
}

TEST(MachineNames, ContainWholeWordsOfOne) {
  EXPECT_TRUE(names().contain("rx 7200"));
  EXPECT_TRUE(names().contain(" 7200 "));
  EXPECT_FALSE(names().contain("RX 72"));
  EXPECT_FALSE(names().contain("X 7200"));
  EXPECT_FALSE(names().contain("RX 7200 network card"));
}

TEST(MachineNames, ContainNoEmptyText) {
  EXPECT_FALSE(names().contain(""));
  EXPECT_FALSE(names().contain("  "));
  EXPECT_FALSE(MachineNames().contain("RX"));
}

}  // namespace
}  // namespace local
