#include "tools/record_local/masking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "suite/local/pci/pci_vpd.h"
#include "suite/local/smbios/smbios_parts.h"
#include "suite/local/smbios/smbios_system.h"
#include "tests/suite/local/host_interface_builder.h"

namespace record {
namespace {

using base::ByteView;
using local::ParsedTable;
using local::SmbiosTables;
using local::Structure;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

// A masked table, kept with what was parsed from it.
struct Masked {
  explicit Masked(const std::vector<Structure>& structures)
      : original(structures, 3, 4) {
    MacMask macs;
    bytes = maskTable(original.tables, macs);
    const std::string entry =
        entryPointOf(original.tables.version, bytes.size());
    tables =
        parseSmbios(local::parseSmbiosEntry(ByteView(entry)), ByteView(bytes));
  }

  ParsedTable original;
  std::string bytes;
  SmbiosTables tables;
};

TEST(MaskText, KeepsLengthAndPunctuation) {
  EXPECT_EQ(maskText("HV-72 00_4"), "XX-XX XX_X");
}

TEST(MaskUuid, RemainsAUuid) {
  EXPECT_EQ(maskUuid("01112233-4455"), "aaaaaaaa-aaaa");
}

TEST(MacMask, KeepsTheMakerAndTellsAddressesApart) {
  MacMask mask;
  const local::MacAddress first = {0x52, 0x54, 0, 0x12, 0x34, 0x56};
  const local::MacAddress second = {0x52, 0x54, 0, 0x12, 0x34, 0x57};
  EXPECT_EQ(local::macText(mask(first)), "52:54:00:00:00:01");
  EXPECT_EQ(local::macText(mask(second)), "52:54:00:00:00:02");
  EXPECT_EQ(local::macText(mask(first)), "52:54:00:00:00:01");
}

TEST(MaskTable, MasksSerialsAndKeepsTheRest) {
  const Masked masked({Structure(1, 0x1B)
                           .text(4, "Halvorn")
                           .text(7, "SN-417")
                           .bytes(8, std::string(16, '\x42')),
                       Structure(2, 0x0F).text(7, "B-1").text(8, "ASSET"),
                       Structure(17, 0x28)
                           .word(0x0C, 1024)
                           .text(0x18, "M-70311")
                           .text(0x19, "TAG9")
                           .text(0x1A, "OM5")});
  const local::SystemFacts system = systemFacts(masked.tables);
  EXPECT_EQ(system.manufacturer, "Halvorn");
  EXPECT_EQ(system.serial, "XX-XXX");
  EXPECT_EQ(system.uuid, "58585858-5858-5858-5858-585858585858");
  EXPECT_EQ(boardFacts(masked.tables).serial, "X-X");
  const auto modules = memoryFacts(masked.tables);
  ASSERT_THAT(modules, SizeIs(1));
  EXPECT_EQ(modules[0].serial, "X-XXXXX");
  EXPECT_EQ(modules[0].partNumber, "OM5");
  EXPECT_THAT(masked.bytes, Not(HasSubstr("ASSET")));
  EXPECT_THAT(masked.bytes, Not(HasSubstr("TAG9")));
}

TEST(MaskTable, LeavesOutTypesThatAreNotRead) {
  const Masked masked({Structure(221, 0x10).text(4, "SECRET")});
  EXPECT_THAT(masked.tables.structures, SizeIs(1));
  EXPECT_THAT(masked.bytes, Not(HasSubstr("SECRET")));
}

TEST(MaskTable, MasksHostInterface) {
  const std::string mac("\x52\x54\x01\x12\x34\x56", 6);
  const Masked masked({local::hostInterface(local::usbV2Device(1, 2, mac),
                                            {local::serviceRecord()})});
  const auto interfaces = hostInterfaces(masked.tables);
  ASSERT_THAT(interfaces, SizeIs(1));
  EXPECT_EQ(local::macText(*interfaces[0].mac), "52:54:01:00:00:01");
  ASSERT_THAT(interfaces[0].services, SizeIs(1));
  EXPECT_EQ(interfaces[0].services[0].serviceUuid,
            "58585858-5858-5858-5858-585858585858");
  EXPECT_EQ(interfaces[0].services[0].serviceAddress, "169.254.0.17");
}

TEST(MaskTable, HostInterfaceThatLiesIsSurvived) {
  for (const unsigned length : {0U, 5U, 0x20U, 0xFFU}) {
    const Masked masked(
        {local::hostInterface(local::usbDevice(1, 2), {local::serviceRecord()})
             .byte(5, length)});
    EXPECT_THAT(masked.tables.structures, SizeIs(2));
  }
}

TEST(MaskVpd, KeepsThePartNumber) {
  const std::string bytes("\x90\x0C\0PN\x03NB1SN\x03\x41-9\x78", 16);
  const std::string masked = maskVpd(ByteView(bytes));
  const local::VitalProductData data = local::parseVpd(ByteView(masked));
  EXPECT_EQ(data.partNumber, "NB1");
  EXPECT_EQ(data.serial, "X-X");
  EXPECT_TRUE(data.complete);
}

}  // namespace
}  // namespace record
