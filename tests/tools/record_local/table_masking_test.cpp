#include "suite/local/recording/table_masking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "suite/local/pci/pci_vpd.h"
#include "suite/local/smbios/host_interface.h"
#include "suite/local/smbios/smbios_parts.h"
#include "suite/local/smbios/smbios_system.h"
#include "tests/suite/local/host_interface_builder.h"

namespace local {
namespace {

using base::ByteView;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

// A masked table, kept with what was parsed from it.
struct Masked {
  explicit Masked(const std::vector<Structure>& structures)
      : original(structures, 3, 4) {
    noteTable(original.tables, masker);
    bytes = maskTable(original.tables, masker);
    const std::string entry =
        entryPointOf(original.tables.version, bytes.size());
    tables = parseSmbios(parseSmbiosEntry(ByteView(entry)), ByteView(bytes));
  }

  masking::Masker masker;
  ParsedTable original;
  std::string bytes;
  SmbiosTables tables;
};

TEST(MaskTable, MasksSerialsAndKeepsTheRest) {
  Masked masked({Structure(1, 0x1B)
                     .text(4, "Halvorn")
                     .text(7, "SN-417")
                     .bytes(8, std::string("\x01\x23\x45\x67\x89\xAB\xCD\xEF"
                                           "\x01\x23\x45\x67\x89\xAB\xCD\xEE",
                                           16)),
                 Structure(2, 0x0F).text(7, "B-1").text(8, "ASSET"),
                 Structure(17, 0x28)
                     .word(0x0C, 1024)
                     .text(0x18, "M-70311")
                     .text(0x19, "TAG9")
                     .text(0x1A, "OM5")});
  const SystemFacts system = systemFacts(masked.tables);
  EXPECT_EQ(system.manufacturer, "Halvorn");
  EXPECT_EQ(system.serial, masked.masker.value("SN-417"));
  EXPECT_NE(system.serial, "SN-417");
  const std::string uuid = systemFacts(masked.original.tables).uuid;
  EXPECT_EQ(system.uuid, masked.masker.value(uuid));
  EXPECT_NE(system.uuid, uuid);
  EXPECT_EQ(boardFacts(masked.tables).serial, masked.masker.value("B-1"));
  const auto modules = memoryFacts(masked.tables);
  ASSERT_THAT(modules, SizeIs(1));
  EXPECT_EQ(modules[0].serial, masked.masker.value("M-70311"));
  EXPECT_EQ(modules[0].partNumber, "OM5");
  EXPECT_THAT(masked.bytes, Not(HasSubstr("ASSET")));
  EXPECT_THAT(masked.bytes, Not(HasSubstr("TAG9")));
}

TEST(MaskTable, LeavesOutTypesThatAreNotRead) {
  Masked masked({Structure(221, 0x10).text(4, "SECRET")});
  EXPECT_THAT(masked.tables.structures, SizeIs(1));
  EXPECT_THAT(masked.bytes, Not(HasSubstr("SECRET")));
}

TEST(MaskTable, MasksHostInterface) {
  const std::string mac("\x52\x54\x01\x12\x34\x56", 6);
  Masked masked({hostInterface(usbV2Device(1, 2, mac), {serviceRecord()})});
  const auto interfaces = hostInterfaces(masked.tables);
  ASSERT_THAT(interfaces, SizeIs(1));
  EXPECT_EQ(macText(*interfaces[0].mac),
            masked.masker.value("52:54:01:12:34:56"));
  ASSERT_THAT(interfaces[0].services, SizeIs(1));
  const std::string uuid =
      hostInterfaces(masked.original.tables).at(0).services.at(0).serviceUuid;
  EXPECT_EQ(interfaces[0].services[0].serviceUuid, masked.masker.value(uuid));
  EXPECT_NE(interfaces[0].services[0].serviceUuid, uuid);
  EXPECT_EQ(interfaces[0].services[0].serviceAddress, "169.254.0.17");
}

TEST(MaskTable, HostInterfaceThatLiesIsSurvived) {
  for (const unsigned length : {0U, 5U, 0x20U, 0xFFU}) {
    Masked masked(
        {hostInterface(usbDevice(1, 2), {serviceRecord()}).byte(5, length)});
    EXPECT_THAT(masked.tables.structures, SizeIs(2));
  }
}

TEST(MaskVpd, KeepsThePartNumber) {
  const std::string bytes("\x90\x0C\0PN\x03NB1SN\x03\x41-9\x78", 16);
  masking::Masker masker;
  noteVpd(ByteView(bytes), masker);
  const std::string masked = maskVpd(ByteView(bytes), masker);
  const VitalProductData data = parseVpd(ByteView(masked));
  EXPECT_EQ(data.partNumber, "NB1");
  EXPECT_EQ(data.serial, masker.value("A-9"));
  EXPECT_NE(data.serial, "A-9");
  EXPECT_TRUE(data.complete);
}

}  // namespace
}  // namespace local
