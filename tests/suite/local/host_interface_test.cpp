#include "suite/local/smbios/host_interface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/suite/local/host_interface_builder.h"

namespace local {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

const std::string kMacBytes = "\x52\x54\x01\x12\x34\x56";

std::vector<HostInterface> interfacesOf(const Structure& structure) {
  const ParsedTable table({structure}, 3, 7);
  return hostInterfaces(table.tables);
}

RedfishOverIp serviceOf(const std::string& record) {
  const auto interfaces =
      interfacesOf(hostInterface(usbDevice(0x1d6b, 0x0104), {record}));
  return interfaces.at(0).services.at(0);
}

TEST(HostInterfaces, ReadsUsbDevice) {
  const auto found =
      interfacesOf(hostInterface(usbDevice(0x1d6b, 0x0104), {serviceRecord()}));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].device, InterfaceDevice::kUsb);
  EXPECT_EQ(found[0].vendorId, 0x1d6b);
  EXPECT_EQ(found[0].productId, 0x0104);
  EXPECT_FALSE(found[0].mac);
  EXPECT_FALSE(found[0].bootstrapsCredentials);
  EXPECT_THAT(found[0].services, SizeIs(1));
}

TEST(HostInterfaces, ReadsPciDevice) {
  const auto found =
      interfacesOf(hostInterface(pciDevice(0x1af4, 0x1041), {serviceRecord()}));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].device, InterfaceDevice::kPci);
  EXPECT_EQ(found[0].vendorId, 0x1af4);
  EXPECT_EQ(found[0].productId, 0x1041);
  EXPECT_EQ(found[0].subsystemVendorId, 0x1111);
  EXPECT_EQ(found[0].subsystemId, 0x2222);
  EXPECT_THAT(found[0].services, SizeIs(1));
}

TEST(HostInterfaces, ReadsSecondVersionOfUsb) {
  const auto found = interfacesOf(hostInterface(
      usbV2Device(0x1d6b, 0x0104, kMacBytes, 1), {serviceRecord()}));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].device, InterfaceDevice::kUsbV2);
  EXPECT_EQ(found[0].vendorId, 0x1d6b);
  EXPECT_EQ(found[0].productId, 0x0104);
  ASSERT_TRUE(found[0].mac);
  EXPECT_EQ(macText(*found[0].mac), "52:54:01:12:34:56");
  EXPECT_TRUE(found[0].bootstrapsCredentials);
  EXPECT_THAT(found[0].services, SizeIs(1));
}

TEST(HostInterfaces, ReadsSecondVersionOfPci) {
  const auto found = interfacesOf(hostInterface(
      pciV2Device(0x1af4, 0x1041, kMacBytes, 1), {serviceRecord()}));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].device, InterfaceDevice::kPciV2);
  EXPECT_EQ(found[0].vendorId, 0x1af4);
  EXPECT_EQ(found[0].subsystemId, 0x2222);
  EXPECT_EQ(macText(*found[0].mac), "52:54:01:12:34:56");
  EXPECT_EQ(*found[0].pci, (PciAddress{0, 0x3b, 1, 1}));
  EXPECT_TRUE(found[0].bootstrapsCredentials);
}

TEST(HostInterfaces, OtherDeviceStillHasItsServices) {
  const auto found =
      interfacesOf(hostInterface("\x80vendor", {serviceRecord()}));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].device, InterfaceDevice::kOther);
  EXPECT_THAT(found[0].services, SizeIs(1));
}

TEST(HostInterfaces, SeveralControllersKeepTableOrder) {
  const ParsedTable table(
      {hostInterface(usbDevice(1, 2), {serviceRecord()}), Structure(1, 0x1B),
       hostInterface(usbDevice(3, 4), {serviceRecord()})},
      3, 7);
  const auto found = hostInterfaces(table.tables);
  ASSERT_THAT(found, SizeIs(2));
  EXPECT_EQ(found[0].handle, 0);
  EXPECT_EQ(found[1].handle, 2);
  EXPECT_EQ(found[1].vendorId, 3);
}

// Each is compared with all others, and a table has room for 65,536.
TEST(HostInterfaces, AreNoMoreThanAMachineHas) {
  const ParsedTable table(
      std::vector<Structure>(100,
                             hostInterface(usbDevice(1, 2), {serviceRecord()})),
      3, 7);
  EXPECT_THAT(hostInterfaces(table.tables), SizeIs(64));
}

TEST(HostInterfaces, OtherInterfaceTypesAreLeftOut) {
  EXPECT_THAT(
      interfacesOf(
          hostInterface(usbDevice(1, 2), {serviceRecord()}).byte(0x04, 0x02)),
      IsEmpty());
}

TEST(HostInterfaces, ShortStructuresAreLeftOut) {
  EXPECT_THAT(interfacesOf(Structure(42, 0x0A).byte(0x04, 0x40)), IsEmpty());
}

TEST(HostInterfaces, DeviceLengthPastTheEndHasNeitherDeviceNorService) {
  const auto found = interfacesOf(
      hostInterface(usbDevice(1, 2), {serviceRecord()}).byte(0x05, 0xFF));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].device, InterfaceDevice::kOther);
  EXPECT_THAT(found[0].services, IsEmpty());
}

TEST(HostInterfaces, DevicePartsThatAreTooShortAreNoDevice) {
  for (const std::string& whole :
       {usbDevice(1, 2), pciDevice(1, 2), usbV2Device(1, 2, kMacBytes),
        pciV2Device(1, 2, kMacBytes)}) {
    const auto found =
        interfacesOf(hostInterface(whole.substr(0, 4), {serviceRecord()}));
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].device, InterfaceDevice::kOther);
    EXPECT_THAT(found[0].services, SizeIs(1));
  }
}

TEST(HostInterfaces, RecordCountPastTheEndGivesThoseThatAreThere) {
  const std::string device = usbDevice(1, 2);
  const auto found = interfacesOf(hostInterface(device, {serviceRecord()})
                                      .byte(0x06 + device.size(), 0xFF));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_THAT(found[0].services, SizeIs(1));
}

TEST(HostInterfaces, RecordLengthPastTheEndIsNoService) {
  const std::string device = usbDevice(1, 2);
  const auto found = interfacesOf(hostInterface(device, {serviceRecord()})
                                      .byte(0x06 + device.size() + 2, 0xFF));
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_THAT(found[0].services, IsEmpty());
}

TEST(HostInterfaces, ShortRecordsAndOtherProtocolsAreSkipped) {
  const std::string device = usbDevice(1, 2);
  Structure structure = hostInterface(
      device, {"OEM", serviceRecord().substr(0, 90), serviceRecord("bmc")});
  structure.byte(0x06 + device.size() + 1, 0xF0);
  const auto found = interfacesOf(structure);
  ASSERT_THAT(found, SizeIs(1));
  ASSERT_THAT(found[0].services, SizeIs(1));
  EXPECT_EQ(found[0].services[0].hostName, "bmc");
}

TEST(RedfishOverIp, ReadsStaticIpv4) {
  const RedfishOverIp service = serviceOf(serviceRecord("bmc.local"));
  EXPECT_EQ(service.serviceUuid, "01112233-4455-6677-8899-aabbccddeeff");
  EXPECT_EQ(service.hostAssignment, IpAssignment::kStatic);
  EXPECT_EQ(service.hostAddress, "169.254.0.18");
  EXPECT_EQ(service.discovery, IpAssignment::kStatic);
  EXPECT_EQ(service.serviceAddress, "169.254.0.17");
  EXPECT_EQ(service.port, 443);
  EXPECT_EQ(service.hostName, "bmc.local");
}

TEST(RedfishOverIp, ReadsIpv6) {
  std::string record = serviceRecord();
  record[51] = 2;
  record.replace(52, 16,
                 std::string("\xfe\x80\0\0\0\0\0\0\0\0\0\0\0\0\0\x01", 16));
  EXPECT_EQ(serviceOf(record).serviceAddress, "fe80::1");
}

TEST(RedfishOverIp, UnknownFormatAndZeroAddressAreNone) {
  std::string record = serviceRecord();
  record[51] = 3;
  record.replace(18, 4, std::string(4, '\0'));
  EXPECT_EQ(serviceOf(record).serviceAddress, "");
  EXPECT_EQ(serviceOf(record).hostAddress, "");
}

TEST(RedfishOverIp, UnknownAssignmentIsUnknown) {
  std::string record = serviceRecord();
  record[50] = 9;
  EXPECT_EQ(serviceOf(record).discovery, IpAssignment::kUnknown);
}

TEST(RedfishOverIp, PortZeroIsTheDefault) {
  std::string record = serviceRecord();
  record.replace(84, 2, std::string(2, '\0'));
  EXPECT_EQ(serviceOf(record).port, 443);
}

TEST(RedfishOverIp, HostNameEndsAtItsNul) {
  EXPECT_EQ(serviceOf(serviceRecord(std::string("bmc\0\0\0", 6))).hostName,
            "bmc");
}

TEST(RedfishOverIp, HostNameLengthPastTheRecordIsCut) {
  std::string record = serviceRecord("bmc");
  record[90] = static_cast<char>(0xFF);
  EXPECT_EQ(serviceOf(record).hostName, "bmc");
}

}  // namespace
}  // namespace local
