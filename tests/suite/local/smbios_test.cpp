#include "suite/local/smbios/smbios.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/suite/local/table_builder.h"

namespace local {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

SmbiosTables parse(const std::string& table) {
  static std::string entry;
  entry = entryPoint64(3, 3, table.size());
  return parseSmbios(parseSmbiosEntry(base::ByteView(entry)),
                     base::ByteView(table));
}

std::vector<int> typesOf(const SmbiosTables& tables) {
  std::vector<int> types;
  for (const SmbiosStructure& structure : tables.structures) {
    types.push_back(structure.type);
  }
  return types;
}

TEST(ParseSmbios, GivesStructuresInTableOrder) {
  const std::string table =
      tableOf({Structure(1, 0x1B), Structure(17, 0x54), Structure(4, 0x30)});
  const SmbiosTables tables = parse(table);
  EXPECT_THAT(typesOf(tables), ElementsAre(1, 17, 4, 127));
  EXPECT_EQ(tables.structures[1].handle, 1);
  EXPECT_EQ(tables.structures[1].formatted.size(), 0x54U);
  EXPECT_THAT(tables.defects, IsEmpty());
}

TEST(ParseSmbios, StopsAtTheEndStructure) {
  const std::string table = tableOf({Structure(1, 0x1B)});
  const SmbiosTables tables = parse(table + table);
  EXPECT_THAT(typesOf(tables), ElementsAre(1, 127));
}

TEST(ParseSmbios, StopsAtTheStatedLength) {
  const std::string first = Structure(1, 0x1B).build(0);
  const std::string table = first + Structure(4, 0x30).build(1);
  const std::string entry = entryPoint64(3, 3, first.size());
  const SmbiosTables tables = parseSmbios(
      parseSmbiosEntry(base::ByteView(entry)), base::ByteView(table));
  EXPECT_THAT(typesOf(tables), ElementsAre(1));
}

TEST(ParseSmbios, StatedLengthPastTheEndIsNoMatter) {
  const std::string table = tableOf({Structure(1, 0x1B)});
  const std::string entry = entryPoint64(3, 3, 0xFFFFFFFF);
  const SmbiosTables tables = parseSmbios(
      parseSmbiosEntry(base::ByteView(entry)), base::ByteView(table));
  EXPECT_THAT(typesOf(tables), ElementsAre(1, 127));
}

TEST(ParseSmbios, WrongCountIsToldAndNotObeyed) {
  const std::string table = tableOf({Structure(1, 0x1B), Structure(2, 0x0F)});
  const std::string entry = entryPoint32(2, 8, table.size(), 1);
  const SmbiosTables tables = parseSmbios(
      parseSmbiosEntry(base::ByteView(entry)), base::ByteView(table));
  EXPECT_THAT(typesOf(tables), ElementsAre(1, 2, 127));
  EXPECT_THAT(tables.defects, ElementsAre(HasSubstr("counts 1 structures")));
}

TEST(ParseSmbios, WithoutEntryPointReadsTheTableAsThree) {
  const std::string table = tableOf({Structure(1, 0x1B)});
  const SmbiosTables tables = parseSmbios(std::nullopt, base::ByteView(table));
  EXPECT_EQ(tables.version.major, 3);
  EXPECT_THAT(typesOf(tables), ElementsAre(1, 127));
  EXPECT_THAT(tables.defects, ElementsAre(HasSubstr("no usable entry point")));
}

TEST(ParseSmbios, LengthZeroKeepsWhatCameBefore) {
  const std::string table = Structure(1, 0x1B).build(0) +
                            std::string("\x04\x00\x01\x00\x00\x00", 6) +
                            Structure(17, 0x54).build(2);
  const SmbiosTables tables = parse(table);
  EXPECT_THAT(typesOf(tables), ElementsAre(1));
  EXPECT_THAT(tables.defects, ElementsAre(HasSubstr("impossible length 0")));
}

TEST(ParseSmbios, LengthBelowTheHeaderKeepsWhatCameBefore) {
  const std::string table =
      Structure(1, 0x1B).build(0) + std::string("\x04\x03\x01\x00\x00\x00", 6);
  EXPECT_THAT(typesOf(parse(table)), ElementsAre(1));
}

TEST(ParseSmbios, LengthPastTheEndKeepsWhatCameBefore) {
  const std::string table =
      Structure(1, 0x1B).build(0) + std::string("\x04\xFF\x01\x00\x00\x00", 6);
  const SmbiosTables tables = parse(table);
  EXPECT_THAT(typesOf(tables), ElementsAre(1));
  EXPECT_THAT(tables.defects, ElementsAre(HasSubstr("impossible length 255")));
}

TEST(ParseSmbios, CutOffHeaderKeepsWhatCameBefore) {
  const SmbiosTables tables =
      parse(Structure(1, 0x1B).build(0) + std::string("\x04\x30", 2));
  EXPECT_THAT(typesOf(tables), ElementsAre(1));
  EXPECT_THAT(tables.defects, ElementsAre(HasSubstr("cut-off")));
}

TEST(ParseSmbios, MissingTerminatorGivesTheTextsThatAreThere) {
  std::string table =
      Structure(1, 0x1B).text(4, "Maker").text(5, "Product").build(0);
  table.resize(table.size() - 5);
  const SmbiosTables tables = parse(table);
  ASSERT_THAT(tables.structures, SizeIs(1));
  EXPECT_EQ(tables.structures[0].string(4), "Maker");
  EXPECT_EQ(tables.structures[0].string(5), "Prod");
  EXPECT_THAT(tables.defects, ElementsAre(HasSubstr("unterminated")));
}

TEST(ParseSmbios, NoStringSetAtAllIsSurvived) {
  std::string table = Structure(1, 0x1B).build(0);
  table.resize(0x1B);
  const SmbiosTables tables = parse(table);
  ASSERT_THAT(tables.structures, SizeIs(1));
  EXPECT_EQ(tables.structures[0].string(4), "");
}

TEST(ParseSmbios, EmptyTableHasNoStructures) {
  EXPECT_THAT(parse("").structures, IsEmpty());
}

TEST(ParseSmbios, HundredThousandStructuresStopAtTheLastHandle) {
  std::string table;
  const std::string one = Structure(126, 4).build(0);
  for (int i = 0; i < 100'000; ++i) {
    table += one;
  }
  const SmbiosTables tables = parse(table);
  EXPECT_THAT(tables.structures, SizeIs(65536));
  EXPECT_THAT(tables.defects, ElementsAre(HasSubstr("more structures")));
}

TEST(SmbiosTables, OfTypeKeepsTableOrder) {
  const std::string table =
      tableOf({Structure(17, 0x54), Structure(4, 0x30), Structure(17, 0x28)});
  const SmbiosTables tables = parse(table);
  const auto found = tables.ofType(kSmbiosMemoryDevice);
  ASSERT_THAT(found, SizeIs(2));
  EXPECT_EQ(found[0]->handle, 0);
  EXPECT_EQ(found[1]->handle, 2);
}

TEST(SmbiosStructure, StringNumberPastTheSetIsEmpty) {
  const std::string table =
      Structure(1, 0x1B).text(4, "Maker").byte(5, 2).byte(6, 255).build(0);
  const SmbiosTables tables = parse(table);
  ASSERT_THAT(tables.structures, SizeIs(1));
  EXPECT_EQ(tables.structures[0].string(4), "Maker");
  EXPECT_EQ(tables.structures[0].string(5), "");
  EXPECT_EQ(tables.structures[0].string(6), "");
}

TEST(SmbiosStructure, StringNumberZeroAndOffsetPastTheEndAreEmpty) {
  const std::string table = Structure(1, 0x08).text(4, "Maker").build(0);
  const SmbiosTables tables = parse(table);
  ASSERT_THAT(tables.structures, SizeIs(1));
  EXPECT_EQ(tables.structures[0].string(7), "");
  EXPECT_EQ(tables.structures[0].string(8), "");
  EXPECT_EQ(tables.structures[0].string(1000), "");
}

}  // namespace
}  // namespace local
