#include "suite/local/smbios/smbios_system.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/suite/local/table_builder.h"

namespace local {
namespace {

const std::string kUuidBytes =
    "\x33\x22\x11\x01\x55\x44\x77\x66\x88\x99\xaa\xbb\xcc\xdd\xee\xff";

Structure systemStructure(std::size_t length) {
  Structure structure(1, length);
  structure.text(0x04, "Halvorn")
      .text(0x05, "RX 200")
      .text(0x06, "v3")
      .text(0x07, "SN-1")
      .bytes(0x08, kUuidBytes);
  return structure;
}

TEST(SystemFacts, ReadsEveryField) {
  const ParsedTable table(
      {systemStructure(0x1B).text(0x19, "RX200-SKU").text(0x1A, "RX")}, 3, 4);
  const SystemFacts facts = systemFacts(table.tables);
  EXPECT_EQ(facts.manufacturer, "Halvorn");
  EXPECT_EQ(facts.product, "RX 200");
  EXPECT_EQ(facts.version, "v3");
  EXPECT_EQ(facts.serial, "SN-1");
  EXPECT_EQ(facts.sku, "RX200-SKU");
  EXPECT_EQ(facts.family, "RX");
  EXPECT_EQ(facts.uuid, "01112233-4455-6677-8899-aabbccddeeff");
}

TEST(SystemFacts, Version23HasNoStockNumber) {
  const ParsedTable table({systemStructure(0x19)}, 2, 3);
  const SystemFacts facts = systemFacts(table.tables);
  EXPECT_EQ(facts.product, "RX 200");
  EXPECT_EQ(facts.sku, "");
  EXPECT_EQ(facts.family, "");
}

TEST(SystemFacts, UuidBefore26IsInWrittenOrder) {
  const ParsedTable table({systemStructure(0x1B)}, 2, 5);
  EXPECT_EQ(systemFacts(table.tables).uuid,
            "33221101-5544-7766-8899-aabbccddeeff");
}

TEST(SystemFacts, StructureThatEndsInTheUuidHasNone) {
  const ParsedTable table({Structure(1, 0x10).text(0x04, "Halvorn")}, 3, 0);
  const SystemFacts facts = systemFacts(table.tables);
  EXPECT_EQ(facts.manufacturer, "Halvorn");
  EXPECT_EQ(facts.uuid, "");
}

TEST(SystemFacts, WithoutStructureIsEmpty) {
  const ParsedTable table({}, 3, 0);
  EXPECT_EQ(systemFacts(table.tables).manufacturer, "");
}

TEST(SystemFacts, FirstOfSeveralCounts) {
  const ParsedTable table({Structure(1, 0x1B).text(5, "first"),
                           Structure(1, 0x1B).text(5, "second")},
                          3, 0);
  EXPECT_EQ(systemFacts(table.tables).product, "first");
}

TEST(UuidText, UnsetUuidIsEmpty) {
  EXPECT_EQ(uuidText(base::ByteView(std::string(16, '\0')), {3, 0}), "");
  EXPECT_EQ(uuidText(base::ByteView(std::string(16, '\xFF')), {3, 0}), "");
}

TEST(BoardFacts, MotherboardGoesBeforeOtherBoards) {
  const ParsedTable table({Structure(2, 0x0F).text(5, "riser").byte(0x0D, 0x0C),
                           Structure(2, 0x0F)
                               .text(4, "Halvorn")
                               .text(5, "MB-7")
                               .text(6, "rev B")
                               .text(7, "BSN-7")
                               .byte(0x0D, 0x0A)},
                          3, 0);
  const BoardFacts facts = boardFacts(table.tables);
  EXPECT_EQ(facts.manufacturer, "Halvorn");
  EXPECT_EQ(facts.product, "MB-7");
  EXPECT_EQ(facts.version, "rev B");
  EXPECT_EQ(facts.serial, "BSN-7");
}

TEST(BoardFacts, WithoutMotherboardTheFirstBoardCounts) {
  const ParsedTable table(
      {Structure(2, 0x08).text(5, "one"), Structure(2, 0x08).text(5, "two")}, 2,
      4);
  EXPECT_EQ(boardFacts(table.tables).product, "one");
}

}  // namespace
}  // namespace local
