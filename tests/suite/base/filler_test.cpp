#include "suite/base/filler.h"

#include <gtest/gtest.h>

namespace base {
namespace {

TEST(IsFiller, WordsForNoValueAreFillersInAnyLetterCase) {
  for (const char* text :
       {"N/A", "na", "NULL", "nil", "None", "UNKNOWN", "Undefined", "empty",
        "Not Specified", "Not available", "Not Set", "not provided",
        "NotProvided", "default STRING", "To Be Filled By O.E.M."}) {
    EXPECT_TRUE(isFiller(text)) << text;
  }
}

TEST(IsFiller, DotsAloneAreAFiller) {
  EXPECT_TRUE(isFiller("."));
  EXPECT_TRUE(isFiller(".."));
  EXPECT_TRUE(isFiller("........"));
}

TEST(IsFiller, OneCharacterThreeTimesIsAFiller) {
  for (const char* text : {"000", "0000000", "FFFF", "xxxxx", "---"}) {
    EXPECT_TRUE(isFiller(text)) << text;
  }
  EXPECT_FALSE(isFiller("00"));
  EXPECT_FALSE(isFiller("FF"));
  EXPECT_FALSE(isFiller("0"));
}

TEST(IsFiller, DigitsInOrderAreAFiller) {
  EXPECT_TRUE(isFiller("0123456789"));
  EXPECT_TRUE(isFiller("123456789"));
  EXPECT_TRUE(isFiller("0123456789ABCDEF"));
  EXPECT_FALSE(isFiller("12345678"));
  EXPECT_FALSE(isFiller("S123456789"));
}

TEST(IsFiller, NameOfTheFieldIsAFiller) {
  for (const char* text :
       {"Serial", "SerialNumber", "SerNum00", "PartNum0", "Part Number",
        "Manufacturer1", "Asset Tag", "Type1Sku0", "A1_SerNum0",
        "Array1_PartNumber0", "ModulePartNumber00", "System Serial Number",
        "System Product Name", "System manufacturer", "Version"}) {
    EXPECT_TRUE(isFiller(text)) << text;
  }
}

TEST(IsFiller, ZeroInHexadecimalIsAFiller) {
  EXPECT_TRUE(isFiller("0x0"));
  EXPECT_TRUE(isFiller("0X0000"));
  EXPECT_FALSE(isFiller("0x"));
  EXPECT_FALSE(isFiller("0x10"));
}

TEST(IsFiller, TextThatOnlyHoldsAFillerIsAValue) {
  for (const char* text : {"", "NA-4200", "Unknown Prismorel", "None of it",
                           "Serial Port 2", "SN0017", "Model 800", "Part 7",
                           "Part", "Emptyhouse", "Typewriter", "K1"}) {
    EXPECT_FALSE(isFiller(text)) << text;
  }
}

}  // namespace
}  // namespace base
