#include "suite/devhealth/parts/names/jep106.h"

#include <gtest/gtest.h>

namespace devhealth {
namespace {

TEST(MemoryMaker, CodeOfTheFirstBankIsAName) {
  for (const char* code : {"CE", "0xCE", "0xCE00", "CE00", "00CE", "0xce"}) {
    EXPECT_EQ(memoryMaker(code), "Samsung") << code;
  }
  EXPECT_EQ(memoryMaker("0x2C"), "Micron");
  EXPECT_EQ(memoryMaker("0xAD00"), "SK Hynix");
}

TEST(MemoryMaker, ParityOfACountOfContinuationsDoesNotMatter) {
  EXPECT_EQ(memoryMaker("80CE"), "Samsung");
  EXPECT_EQ(memoryMaker("0xCE80"), "Samsung");
  EXPECT_EQ(memoryMaker("2C80"), "Micron");
}

TEST(MemoryMaker, FurtherBanksAreToldByTheirContinuations) {
  EXPECT_EQ(memoryMaker("0198"), "Kingston");
  EXPECT_EQ(memoryMaker("9801"), "Kingston");
  EXPECT_EQ(memoryMaker("0x9E02"), "Corsair");
  EXPECT_EQ(memoryMaker("0x859B"), "Crucial");
  EXPECT_EQ(memoryMaker("0x8A91"), "CXMT");
}

TEST(MemoryMaker, CodeFirstIsTriedFirst) {
  // As code and count it is bank 2, as count and code bank 80.
  EXPECT_EQ(memoryMaker("4F01"), "Transcend");
}

TEST(MemoryMaker, EveryOtherTextStands) {
  for (const char* text : {"Fennmark", "", "0x", "C", "CE0", "0xCE0000", "ABCD",
                           "CE CE", "7F7F", "0x0000"}) {
    EXPECT_EQ(memoryMaker(text), text);
  }
}

}  // namespace
}  // namespace devhealth
