#include "suite/local/smbios/smbios_parts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "tests/suite/local/table_builder.h"

namespace local {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr unsigned kPopulatedAndEnabled = 0x41;

Structure processor(std::size_t length = 0x30) {
  Structure structure(4, length);
  structure.text(0x04, "CPU1")
      .byte(0x05, 3)
      .byte(0x06, 0xB3)
      .text(0x10, "Corvex 9000")
      .word(0x14, 4000)
      .word(0x16, 2600)
      .byte(0x18, kPopulatedAndEnabled);
  return structure;
}

TEST(ProcessorFacts, ReadsEveryField) {
  const ParsedTable table({processor()}, 3, 4);
  const auto processors = processorFacts(table.tables);
  ASSERT_THAT(processors, SizeIs(1));
  EXPECT_EQ(processors[0].socket, "CPU1");
  EXPECT_EQ(processors[0].version, "Corvex 9000");
  EXPECT_EQ(processors[0].family, "Intel Xeon");
  EXPECT_EQ(processors[0].maxMhz, 4000U);
  EXPECT_EQ(processors[0].currentMhz, 2600U);
  EXPECT_EQ(processors[0].state, ProcessorState::kEnabled);
}

TEST(ProcessorFacts, Version24IsLongEnough) {
  const ParsedTable table({processor(0x23)}, 2, 4);
  EXPECT_THAT(processorFacts(table.tables), SizeIs(1));
}

TEST(ProcessorFacts, CoresAndThreadsAreCounted) {
  const auto counted = [](const Structure& structure) {
    const ParsedTable table({structure}, 3, 4);
    const ProcessorFacts facts = processorFacts(table.tables).at(0);
    return std::pair(facts.cores, facts.threads);
  };
  using Counts = std::pair<std::optional<unsigned>, std::optional<unsigned>>;
  EXPECT_EQ(counted(processor().byte(0x23, 32).byte(0x25, 64)),
            Counts(32U, 64U));
  EXPECT_EQ(counted(processor()
                        .byte(0x23, 0xFF)
                        .word(0x2A, 256)
                        .byte(0x25, 0xFF)
                        .word(0x2E, 512)),
            Counts(256U, 512U));
  EXPECT_EQ(counted(processor()), Counts(std::nullopt, std::nullopt));
  EXPECT_EQ(counted(processor(0x28).byte(0x23, 0xFF)),
            Counts(std::nullopt, std::nullopt));
}

TEST(ProcessorFacts, FamilyFeIsInTheSecondField) {
  const ParsedTable table({processor().byte(0x06, 0xFE).word(0x28, 0x101)}, 3,
                          4);
  EXPECT_EQ(processorFacts(table.tables).at(0).family, "ARMv8");
}

TEST(ProcessorFacts, SecondFamilyPastTheStructureIsUnknown) {
  const ParsedTable table({processor(0x28).byte(0x06, 0xFE)}, 2, 6);
  EXPECT_EQ(processorFacts(table.tables).at(0).family, "");
}

TEST(ProcessorFacts, EmptySocketsAndOtherProcessorsAreLeftOut) {
  const ParsedTable table({processor().byte(0x18, 0x01),
                           processor().byte(0x05, 6), Structure(4, 0x10)},
                          3, 0);
  EXPECT_THAT(processorFacts(table.tables), IsEmpty());
}

TEST(ProcessorFacts, SocketOfTypeOtherServesWithoutACentralOne) {
  const Structure other = processor().byte(0x05, 1).text(0x04, "Other");
  const ParsedTable alone({other, processor().byte(0x18, 0)}, 3, 0);
  ASSERT_THAT(processorFacts(alone.tables), SizeIs(1));
  EXPECT_EQ(processorFacts(alone.tables)[0].socket, "Other");
  const ParsedTable beside({other, processor()}, 3, 0);
  ASSERT_THAT(processorFacts(beside.tables), SizeIs(1));
  EXPECT_EQ(processorFacts(beside.tables)[0].socket, "CPU1");
}

TEST(ProcessorFacts, VersionThatIsAMachinesNameIsNone) {
  const Structure guest = processor().text(0x10, "pc-q9-7.2");
  const ParsedTable system({guest, Structure(1, 0x1B).text(6, "pc-q9-7.2")}, 3,
                           0);
  EXPECT_EQ(processorFacts(system.tables).at(0).version, "");
  EXPECT_EQ(processorFacts(system.tables).at(0).family, "Intel Xeon");
  const ParsedTable board({guest, Structure(2, 0x0F).text(5, "pc-q9-7.2")}, 3,
                          0);
  EXPECT_EQ(processorFacts(board.tables).at(0).version, "");
  const ParsedTable neither({guest, Structure(1, 0x1B).text(6, "pc-q9")}, 3, 0);
  EXPECT_EQ(processorFacts(neither.tables).at(0).version, "pc-q9-7.2");
}

TEST(ProcessorFacts, SpeedsOfZeroAreUnknown) {
  const ParsedTable table({processor().word(0x14, 0).word(0x16, 0)}, 3, 0);
  const ProcessorFacts facts = processorFacts(table.tables).at(0);
  EXPECT_FALSE(facts.maxMhz);
  EXPECT_FALSE(facts.currentMhz);
}

TEST(ProcessorFacts, StatesFollowTheStatusBits) {
  const auto state = [](unsigned bits) {
    const ParsedTable table({processor().byte(0x18, 0x40U | bits)}, 3, 0);
    return processorFacts(table.tables).at(0).state;
  };
  EXPECT_EQ(state(0), ProcessorState::kUnknown);
  EXPECT_EQ(state(1), ProcessorState::kEnabled);
  EXPECT_EQ(state(2), ProcessorState::kDisabledByUser);
  EXPECT_EQ(state(3), ProcessorState::kFailed);
  EXPECT_EQ(state(4), ProcessorState::kIdle);
  EXPECT_EQ(state(5), ProcessorState::kUnknown);
  EXPECT_EQ(state(7), ProcessorState::kUnknown);
}

Structure memoryDevice(std::size_t length = 0x5C) {
  Structure structure(17, length);
  structure.word(0x0C, 0x7FFF)
      .text(0x10, "DIMM A1")
      .text(0x11, "Node 0")
      .byte(0x12, 0x22)
      .word(0x15, 4800);
  if (length > 0x1A) {
    structure.text(0x17, "Ostrava Memory")
        .text(0x18, "M-SN-1")
        .text(0x1A, "OM32G");
  }
  return structure;
}

TEST(MemoryFacts, ReadsEveryField) {
  const ParsedTable table({memoryDevice()}, 3, 7);
  const auto modules = memoryFacts(table.tables);
  ASSERT_THAT(modules, SizeIs(1));
  EXPECT_EQ(modules[0].locator, "DIMM A1");
  EXPECT_EQ(modules[0].bank, "Node 0");
  EXPECT_EQ(modules[0].partNumber, "OM32G");
  EXPECT_EQ(modules[0].serial, "M-SN-1");
  EXPECT_EQ(modules[0].manufacturer, "Ostrava Memory");
  EXPECT_EQ(modules[0].type, "DDR5");
  EXPECT_EQ(modules[0].maxSpeed, 4800U);
}

TEST(MemoryFacts, Version24IsLongEnough) {
  const ParsedTable table({memoryDevice(0x1B)}, 2, 4);
  const auto modules = memoryFacts(table.tables);
  ASSERT_THAT(modules, SizeIs(1));
  EXPECT_EQ(modules[0].partNumber, "OM32G");
}

TEST(MemoryFacts, Version21HasNoSpeed) {
  const ParsedTable table({Structure(17, 0x15).word(0x0C, 512).text(0x10, "A")},
                          2, 1);
  const auto modules = memoryFacts(table.tables);
  ASSERT_THAT(modules, SizeIs(1));
  EXPECT_FALSE(modules[0].maxSpeed);
}

TEST(MemoryFacts, EmptySocketsAreLeftOut) {
  const ParsedTable table({memoryDevice().word(0x0C, 0), Structure(17, 0x0C)},
                          3, 0);
  EXPECT_THAT(memoryFacts(table.tables), IsEmpty());
}

TEST(MemoryFacts, SizeUnknownIsAModule) {
  const ParsedTable table({memoryDevice().word(0x0C, 0xFFFF)}, 3, 0);
  EXPECT_THAT(memoryFacts(table.tables), SizeIs(1));
}

// The table's first structure has the handle 0.
TEST(MemoryFacts, ModulesOfOtherArraysAreLeftOut) {
  const auto modulesWith = [](unsigned use, unsigned array) {
    const ParsedTable table(
        {Structure(16, 0x17).byte(0x05, use), memoryDevice().word(0x04, array)},
        3, 0);
    return memoryFacts(table.tables).size();
  };
  EXPECT_EQ(modulesWith(0x03, 0), 1U);
  EXPECT_EQ(modulesWith(0x05, 0), 0U) << "flash";
  EXPECT_EQ(modulesWith(0x04, 0), 0U) << "video memory";
  EXPECT_EQ(modulesWith(0x05, 0xFFFE), 1U) << "no array";
  EXPECT_EQ(modulesWith(0x05, 7), 1U) << "an array that is not there";
}

TEST(MemoryFacts, ArrayCutBeforeItsUseLeavesNothingOut) {
  const ParsedTable table({Structure(16, 0x05), memoryDevice()}, 3, 0);
  EXPECT_THAT(memoryFacts(table.tables), SizeIs(1));
}

Structure emptyPlace() { return memoryDevice().word(0x0C, 0); }

TEST(MemoryPlaces, AreThoseThatTheArraysState) {
  const Structure array = Structure(16, 0x17).byte(0x05, 0x03).word(0x0D, 12);
  const ParsedTable two({array, array, memoryDevice()}, 3, 0);
  EXPECT_EQ(memoryPlaces(two.tables), 24U);
  const ParsedTable other({array, memoryDevice().word(0x04, 2),
                           Structure(16, 0x17).byte(0x05, 0x05).word(0x0D, 4),
                           memoryDevice().word(0x04, 2)},
                          3, 0);
  EXPECT_EQ(memoryPlaces(other.tables), 12U) << "flash beside it";
}

TEST(MemoryPlaces, AreListedWhereNoArrayStatesAsMany) {
  const ParsedTable none({memoryDevice(), emptyPlace(), emptyPlace()}, 3, 0);
  EXPECT_EQ(memoryPlaces(none.tables), 3U);
  const ParsedTable fewer({Structure(16, 0x17).byte(0x05, 0x03).word(0x0D, 1),
                           memoryDevice(), emptyPlace()},
                          3, 0);
  EXPECT_EQ(memoryPlaces(fewer.tables), 2U);
  const ParsedTable cut({Structure(16, 0x05), emptyPlace()}, 2, 0);
  EXPECT_EQ(memoryPlaces(cut.tables), 1U);
}

TEST(MemoryPlaces, AreUnknownWithoutAny) {
  const ParsedTable table({processor(), Structure(16, 0x17).byte(0x05, 3)}, 3,
                          0);
  EXPECT_EQ(memoryPlaces(table.tables), std::nullopt);
}

TEST(MemoryFacts, SpeedFfffIsInTheExtendedField) {
  const ParsedTable table(
      {memoryDevice().word(0x15, 0xFFFF).dword(0x54, 0x80011170)}, 3, 3);
  EXPECT_EQ(memoryFacts(table.tables).at(0).maxSpeed, 70000U);
}

TEST(MemoryFacts, ExtendedSpeedPastTheStructureIsUnknown) {
  const ParsedTable table({memoryDevice(0x28).word(0x15, 0xFFFF)}, 3, 3);
  EXPECT_FALSE(memoryFacts(table.tables).at(0).maxSpeed);
}

TEST(MemoryFacts, CapacityIsInMebibytes) {
  const auto capacity = [](const Structure& structure) {
    const ParsedTable table({structure}, 3, 3);
    return memoryFacts(table.tables).at(0).capacityMib;
  };
  EXPECT_EQ(capacity(memoryDevice().word(0x0C, 16384)), 16384U);
  EXPECT_EQ(capacity(memoryDevice().word(0x0C, 0x8000 | 2048)), 2U);
  EXPECT_EQ(capacity(memoryDevice().dword(0x1C, 0x80010000)), 65536U);
  EXPECT_EQ(capacity(memoryDevice().word(0x0C, 0xFFFF)), std::nullopt);
  EXPECT_EQ(capacity(memoryDevice(0x1B)), std::nullopt);
}

TEST(MemoryFacts, SpeedZeroIsUnknown) {
  const ParsedTable table({memoryDevice().word(0x15, 0)}, 3, 0);
  EXPECT_FALSE(memoryFacts(table.tables).at(0).maxSpeed);
}

Structure supply(unsigned characteristics) {
  Structure structure(39, 0x16);
  structure.text(0x05, "Bay 1")
      .text(0x06, "PSU1")
      .word(0x0C, 800)
      .word(0x0E, characteristics);
  return structure;
}

TEST(SupplyFacts, ReadsEveryField) {
  const ParsedTable table({supply(3U << 7U | 2U)}, 3, 0);
  const auto supplies = supplyFacts(table.tables);
  ASSERT_THAT(supplies, SizeIs(1));
  EXPECT_EQ(supplies[0].location, "Bay 1");
  EXPECT_EQ(supplies[0].name, "PSU1");
  EXPECT_EQ(supplies[0].capacityWatts, 800U);
  EXPECT_EQ(supplies[0].state, SupplyState::kOk);
}

TEST(SupplyFacts, AbsentSuppliesAreLeftOut) {
  const ParsedTable table({supply(3U << 7U), Structure(39, 0x0E)}, 3, 0);
  EXPECT_THAT(supplyFacts(table.tables), IsEmpty());
}

Structure templateOfSupply() {
  return Structure(39, 0x16)
      .text(0x05, "To Be Filled By O.E.M.")
      .text(0x06, "  ")
      .text(0x07, "Not Specified")
      .text(0x0A, "PartNum0")
      .word(0x0C, 0x8000)
      .word(0x0E, 2);
}

TEST(SupplyFacts, TemplatesAreLeftOut) {
  const ParsedTable table({templateOfSupply(), templateOfSupply().word(0x0C, 0),
                           Structure(39, 0x16).word(0x0E, 2)},
                          3, 0);
  EXPECT_THAT(supplyFacts(table.tables), IsEmpty());
}

TEST(SupplyFacts, AnyValueMakesASupplyOfATemplate) {
  for (const std::size_t text : {0x05U, 0x06U, 0x07U, 0x0AU}) {
    const ParsedTable table({templateOfSupply().text(text, "VM-800")}, 3, 0);
    EXPECT_THAT(supplyFacts(table.tables), SizeIs(1)) << text;
  }
  const ParsedTable table({templateOfSupply().word(0x0C, 800)}, 3, 0);
  EXPECT_THAT(supplyFacts(table.tables), SizeIs(1));
}

TEST(SupplyFacts, UnpluggedIsBit2) {
  const ParsedTable table({supply(2U | 4U), supply(2U)}, 3, 0);
  EXPECT_TRUE(supplyFacts(table.tables).at(0).unplugged);
  EXPECT_FALSE(supplyFacts(table.tables).at(1).unplugged);
}

TEST(SupplyFacts, UnknownCapacityIsNone) {
  const ParsedTable table({supply(2).word(0x0C, 0x8000)}, 3, 0);
  EXPECT_FALSE(supplyFacts(table.tables).at(0).capacityWatts);
}

TEST(SupplyFacts, StatesFollowTheStatusBits) {
  const auto state = [](unsigned bits) {
    const ParsedTable table({supply(bits << 7U | 2U)}, 3, 0);
    return supplyFacts(table.tables).at(0).state;
  };
  EXPECT_EQ(state(1), SupplyState::kUnknown);
  EXPECT_EQ(state(3), SupplyState::kOk);
  EXPECT_EQ(state(4), SupplyState::kNonCritical);
  EXPECT_EQ(state(5), SupplyState::kCritical);
}

TEST(SlotFacts, ReadsDesignationAndAddress) {
  const ParsedTable table({Structure(9, 0x11)
                               .text(0x04, "Slot 3")
                               .word(0x0D, 0x0001)
                               .byte(0x0F, 0x3B)
                               .byte(0x10, 0x12)},
                          3, 0);
  const auto slots = slotFacts(table.tables);
  ASSERT_THAT(slots, SizeIs(1));
  EXPECT_EQ(slots[0].designation, "Slot 3");
  EXPECT_EQ(slots[0].address, (PciAddress{1, 0x3B, 2, 2}));
}

TEST(SlotFacts, SlotsWithoutAddressOrNameAreLeftOut) {
  const ParsedTable table(
      {Structure(9, 0x0D).text(0x04, "of version 2.4"),
       Structure(9, 0x11).text(0x04, "no bus").word(0x0D, 0xFFFF),
       Structure(9, 0x11).text(0x04, "none").byte(0x0F, 0xFF).byte(0x10, 0xFF),
       Structure(9, 0x11)},
      3, 0);
  EXPECT_THAT(slotFacts(table.tables), IsEmpty());
}

Structure slotInUse(const std::string& designation, unsigned usage) {
  return Structure(9, 0x11)
      .text(0x04, designation)
      .byte(0x07, usage)
      .byte(0x0F, 0x3B);
}

constexpr unsigned kAvailable = 3;
constexpr unsigned kInUse = 4;

TEST(SlotFacts, OfSeveralAtOneAddressTheOneInUseCounts) {
  const ParsedTable table(
      {slotInUse("Slot 1", kAvailable), slotInUse("Slot 2", kInUse),
       slotInUse("Slot 3", kAvailable)},
      3, 0);
  const auto slots = slotFacts(table.tables);
  ASSERT_THAT(slots, SizeIs(1));
  EXPECT_EQ(slots[0].designation, "Slot 2");
}

TEST(SlotFacts, SeveralInUseAtOneAddressNameNothing) {
  const ParsedTable used(
      {slotInUse("Slot 1", kInUse), slotInUse("Slot 2", kInUse)}, 3, 0);
  EXPECT_THAT(slotFacts(used.tables), IsEmpty());
  const ParsedTable free(
      {slotInUse("Slot 1", kAvailable), slotInUse("Slot 2", kAvailable)}, 3, 0);
  EXPECT_THAT(slotFacts(free.tables), IsEmpty());
  const ParsedTable nameless({slotInUse("Slot 1", kAvailable),
                              Structure(9, 0x11).byte(7, 4).byte(0x0F, 0x3B)},
                             3, 0);
  EXPECT_THAT(slotFacts(nameless.tables), IsEmpty());
}

TEST(SlotFacts, OneAloneCountsWhateverItsUsage) {
  const ParsedTable table({slotInUse("Slot 1", kAvailable)}, 3, 0);
  EXPECT_THAT(slotFacts(table.tables), SizeIs(1));
}

TEST(OnboardFacts, DesignationMayBeMissing) {
  const ParsedTable table({Structure(41, 0x0B).byte(0x09, 2)}, 3, 0);
  ASSERT_THAT(onboardFacts(table.tables), SizeIs(1));
  EXPECT_EQ(onboardFacts(table.tables)[0].designation, "");
}

TEST(OnboardFacts, ReadsDesignationAndAddress) {
  const ParsedTable table({Structure(41, 0x0B)
                               .text(0x04, "LOM 1")
                               .byte(0x05, 0x85)
                               .word(0x07, 0)
                               .byte(0x09, 2)
                               .byte(0x0A, 0)},
                          3, 0);
  const auto places = onboardFacts(table.tables);
  ASSERT_THAT(places, SizeIs(1));
  EXPECT_EQ(places[0].designation, "LOM 1");
  EXPECT_EQ(places[0].address, (PciAddress{0, 2, 0, 0}));
}

}  // namespace
}  // namespace local
