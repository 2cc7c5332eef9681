#include "suite/local/controller/network.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/suite/local/folder.h"

namespace local {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

TEST(NetworkDevices, ReadsUsbCard) {
  Folder folder;
  const std::string usb = "/sys/devices/usb1/1-1";
  folder.file(usb + "/idVendor", "0525\n")
      .file(usb + "/idProduct", "a4a2\n")
      .folder(usb + "/1-1:1.0")
      .link("/sys/devices/usb1/1-1/1-1:1.0/net/usb0/device", "../../../1-1:1.0")
      .file(usb + "/1-1:1.0/net/usb0/address", "52:54:00:12:34:56\n")
      .file(usb + "/1-1:1.0/net/usb0/flags", "0x1003\n")
      .file(usb + "/1-1:1.0/net/usb0/operstate", "up\n")
      .link("/sys/class/net/usb0", "../../devices/usb1/1-1/1-1:1.0/net/usb0");
  const auto devices = networkDevices(folder.root());
  ASSERT_THAT(devices, SizeIs(1));
  EXPECT_EQ(devices[0].name, "usb0");
  EXPECT_EQ(macText(*devices[0].mac), "52:54:00:12:34:56");
  EXPECT_EQ(devices[0].usbVendorId, 0x0525);
  EXPECT_EQ(devices[0].usbProductId, 0xa4a2);
  EXPECT_EQ(devices[0].pciVendorId, 0);
  EXPECT_TRUE(devices[0].up);
}

TEST(NetworkDevices, ReadsPciCard) {
  Folder folder;
  folder.file("/sys/class/net/eth0/device/vendor", "0x1af4\n")
      .file("/sys/class/net/eth0/device/device", "0x1041\n")
      .file("/sys/class/net/eth0/device/subsystem_vendor", "0x1111\n")
      .file("/sys/class/net/eth0/device/subsystem_device", "0x2222\n");
  const auto devices = networkDevices(folder.root());
  ASSERT_THAT(devices, SizeIs(1));
  EXPECT_EQ(devices[0].pciVendorId, 0x1af4);
  EXPECT_EQ(devices[0].pciDeviceId, 0x1041);
  EXPECT_EQ(devices[0].pciSubsystemVendorId, 0x1111);
  EXPECT_EQ(devices[0].pciSubsystemId, 0x2222);
  EXPECT_FALSE(devices[0].mac);
}

bool upWith(const std::string& flags, const std::string& state) {
  Folder folder;
  folder.file("/sys/class/net/usb0/flags", flags)
      .file("/sys/class/net/usb0/operstate", state);
  return networkDevices(folder.root()).at(0).up;
}

TEST(NetworkDevices, UpMeansSwitchedOnWithALink) {
  EXPECT_TRUE(upWith("0x1003", "up"));
  EXPECT_TRUE(upWith("0x1003", "unknown"));
  EXPECT_FALSE(upWith("0x1003", "down"));
  EXPECT_FALSE(upWith("0x1002", "up"));
  EXPECT_FALSE(upWith("", "up"));
}

TEST(NetworkDevices, LinkDecidesWhereTheStateIsNotKept) {
  Folder folder;
  folder.file("/sys/class/net/usb0/flags", "0x1003\n");
  folder.file("/sys/class/net/usb0/operstate", "unknown\n");
  folder.file("/sys/class/net/usb0/carrier", "0\n");
  folder.file("/sys/class/net/usb1/flags", "0x1003\n");
  folder.file("/sys/class/net/usb1/operstate", "unknown\n");
  folder.file("/sys/class/net/usb1/carrier", "1\n");
  const auto devices = networkDevices(folder.root());
  ASSERT_THAT(devices, SizeIs(2));
  EXPECT_FALSE(devices[0].up);
  EXPECT_TRUE(devices[1].up);
}

TEST(NetworkDevices, NoneWithoutTheFolder) {
  const Folder folder;
  EXPECT_THAT(networkDevices(folder.root()), IsEmpty());
}

TEST(RunningDevices, LoopbackHasItsAddress) {
  EXPECT_THAT(
      runningDevices(),
      Contains(AllOf(Field(&NetworkDevice::name, "lo"),
                     Field(&NetworkDevice::addresses, Contains("127.0.0.1")))));
}

TEST(ParseMac, TakesSixBytesOnly) {
  EXPECT_EQ(macText(*parseMac("0a:1B:2c:3d:4e:5f")), "0a:1b:2c:3d:4e:5f");
  EXPECT_FALSE(parseMac(""));
  EXPECT_FALSE(parseMac("0a:1b:2c:3d:4e"));
  EXPECT_FALSE(parseMac("0a-1b-2c-3d-4e-5f"));
  EXPECT_FALSE(parseMac("0a:1b:2c:3d:4e:5g"));
  EXPECT_FALSE(parseMac("0a:1b:2c:3d:4e:5f:60"));
}

}  // namespace
}  // namespace local
