#include "suite/local/smbios/smbios_entry.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/suite/local/table_builder.h"

namespace local {
namespace {

TEST(ParseSmbiosEntry, Reads32BitEntryPoint) {
  const std::string bytes = entryPoint32(2, 8, 1234, 56);
  const auto entry = parseSmbiosEntry(base::ByteView(bytes));
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->version.major, 2);
  EXPECT_EQ(entry->version.minor, 8);
  EXPECT_EQ(entry->tableLength, 1234U);
  EXPECT_EQ(entry->structureCount, 56U);
  EXPECT_TRUE(entry->checksumRight);
}

TEST(ParseSmbiosEntry, Reads64BitEntryPoint) {
  const std::string bytes = entryPoint64(3, 7, 70000);
  const auto entry = parseSmbiosEntry(base::ByteView(bytes));
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->version.major, 3);
  EXPECT_EQ(entry->version.minor, 7);
  EXPECT_EQ(entry->tableLength, 70000U);
  EXPECT_EQ(entry->structureCount, 0U);
  EXPECT_TRUE(entry->checksumRight);
}

TEST(ParseSmbiosEntry, ReadsTablePartAlone) {
  std::string bytes(0x0F, '\0');
  bytes.replace(0, 5, "_DMI_");
  bytes[0x06] = 0x40;
  bytes[0x0C] = 7;
  bytes[0x0E] = 0x24;
  const auto entry = parseSmbiosEntry(base::ByteView(bytes));
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->version.major, 2);
  EXPECT_EQ(entry->version.minor, 4);
  EXPECT_EQ(entry->tableLength, 0x40U);
  EXPECT_EQ(entry->structureCount, 7U);
}

TEST(ParseSmbiosEntry, WrongChecksumIsToldAndRead) {
  std::string bytes = entryPoint64(3, 2, 100);
  bytes[0x05] = static_cast<char>(bytes[0x05] + 1);
  const auto entry = parseSmbiosEntry(base::ByteView(bytes));
  ASSERT_TRUE(entry);
  EXPECT_FALSE(entry->checksumRight);
  EXPECT_EQ(entry->version.major, 3);
}

TEST(ParseSmbiosEntry, AcceptsLengthThatVersion21Printed) {
  std::string bytes = entryPoint32(2, 1, 100, 5);
  bytes[0x05] = 0x1E;
  bytes[0x04] = static_cast<char>(bytes[0x04] + 1);
  const auto entry = parseSmbiosEntry(base::ByteView(bytes));
  ASSERT_TRUE(entry);
  EXPECT_TRUE(entry->checksumRight);
}

TEST(ParseSmbiosEntry, ChecksumOverMoreThanThereIsIsWrong) {
  std::string bytes = entryPoint64(3, 2, 100);
  bytes[0x06] = static_cast<char>(0xFF);
  const auto entry = parseSmbiosEntry(base::ByteView(bytes));
  ASSERT_TRUE(entry);
  EXPECT_FALSE(entry->checksumRight);
}

TEST(ParseSmbiosEntry, CorrectsVersionsThatFirmwareMisstates) {
  const auto minorOf = [](unsigned stated) {
    const std::string bytes = entryPoint32(2, stated, 100, 5);
    return parseSmbiosEntry(base::ByteView(bytes))->version.minor;
  };
  EXPECT_EQ(minorOf(31), 3);
  EXPECT_EQ(minorOf(33), 3);
  EXPECT_EQ(minorOf(51), 6);
  EXPECT_EQ(minorOf(7), 7);
}

TEST(ParseSmbiosEntry, TruncatedEntryPointGivesNothing) {
  for (const std::string& whole :
       {entryPoint32(2, 8, 100, 5), entryPoint64(3, 0, 100)}) {
    const std::string cut = whole.substr(0, 0x0B);
    EXPECT_FALSE(parseSmbiosEntry(base::ByteView(cut)));
  }
}

TEST(ParseSmbiosEntry, OtherBytesGiveNothing) {
  EXPECT_FALSE(parseSmbiosEntry(base::ByteView()));
  EXPECT_FALSE(parseSmbiosEntry(base::ByteView("_SM")));
  EXPECT_FALSE(
      parseSmbiosEntry(base::ByteView("nothing of the kind at all here")));
}

TEST(SmbiosVersion, ComparesMajorBeforeMinor) {
  const SmbiosVersion version = {3, 1};
  EXPECT_TRUE(version.atLeast(2, 6));
  EXPECT_TRUE(version.atLeast(3, 1));
  EXPECT_FALSE(version.atLeast(3, 2));
  EXPECT_FALSE(version.atLeast(4, 0));
}

}  // namespace
}  // namespace local
