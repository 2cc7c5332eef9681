#include "suite/local/controller/ipmi_device.h"

#include <gtest/gtest.h>

#include "tests/suite/local/folder.h"

namespace local {
namespace {

using namespace std::chrono_literals;

TEST(IpmiDevice, WithoutNodeIsMissing) {
  const Folder folder;
  IpmiDevice device(folder.root());
  EXPECT_EQ(device.access(), Access::kMissing);
  EXPECT_FALSE(device.ask(ipmi::getDeviceIdRequest(), 1s));
}

TEST(IpmiDevice, PlainFileIsNoDevice) {
  Folder folder;
  folder.file("/dev/ipmi0", "");
  IpmiDevice device(folder.root());
  EXPECT_EQ(device.access(), Access::kFailed);
  EXPECT_EQ(device.path(), "/dev/ipmi0");
  EXPECT_FALSE(device.ask(ipmi::getDeviceIdRequest(), 1s));
}

TEST(IpmiDevice, DeviceOutsideARecordedMachineIsMissing) {
  Folder folder;
  folder.link("/dev/ipmi0", "/dev/null");
  EXPECT_EQ(IpmiDevice(folder.root()).access(), Access::kMissing);
}

}  // namespace
}  // namespace local
