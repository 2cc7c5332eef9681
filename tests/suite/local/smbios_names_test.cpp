#include "suite/local/smbios/smbios_names.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace local {
namespace {

TEST(ProcessorFamilyName, KnowsBothRanges) {
  EXPECT_EQ(processorFamilyName(0x0B), "Intel Pentium");
  EXPECT_EQ(processorFamilyName(0xB3), "Intel Xeon");
  EXPECT_EQ(processorFamilyName(0x6B), "AMD Zen");
  EXPECT_EQ(processorFamilyName(0x102), "ARMv9");
  EXPECT_EQ(processorFamilyName(0x307), "Intel Core Ultra 9");
}

TEST(ProcessorFamilyName, OtherAndUnknownHaveNone) {
  EXPECT_EQ(processorFamilyName(0), "");
  EXPECT_EQ(processorFamilyName(1), "");
  EXPECT_EQ(processorFamilyName(2), "");
  EXPECT_EQ(processorFamilyName(0xFFFF), "");
}

// A row out of order is not found by the search, so every row must be.
TEST(ProcessorFamilyName, EveryRowIsFoundAndNamesDiffer) {
  std::set<std::string> names;
  for (unsigned family = 0; family < 0x400; ++family) {
    const auto name = processorFamilyName(family);
    if (name.empty()) {
      continue;
    }
    EXPECT_TRUE(names.emplace(name).second) << name;
  }
  EXPECT_EQ(names.size(), 137U);
}

TEST(MemoryTypeName, KnowsTheTypesOfToday) {
  EXPECT_EQ(memoryTypeName(0x1A), "DDR4");
  EXPECT_EQ(memoryTypeName(0x22), "DDR5");
  EXPECT_EQ(memoryTypeName(0x24), "HBM3");
}

TEST(MemoryTypeName, UnassignedNumbersHaveNone) {
  EXPECT_EQ(memoryTypeName(2), "");
  EXPECT_EQ(memoryTypeName(0x15), "");
  EXPECT_EQ(memoryTypeName(0xFF), "");
}

TEST(MemoryTypeName, EveryRowIsFound) {
  int count = 0;
  for (unsigned type = 0; type <= 0xFF; ++type) {
    if (!memoryTypeName(type).empty()) {
      ++count;
    }
  }
  EXPECT_EQ(count, 31);
}

}  // namespace
}  // namespace local
