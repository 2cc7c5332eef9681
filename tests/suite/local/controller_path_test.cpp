#include "suite/local/controller/controller_path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace local {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

constexpr MacAddress kMac = {0x52, 0x54, 0, 0x12, 0x34, 0x56};

RedfishOverIp service() {
  RedfishOverIp service;
  service.serviceUuid = "01112233-4455-6677-8899-aabbccddeeff";
  service.hostAssignment = IpAssignment::kStatic;
  service.hostAddress = "169.254.0.18";
  service.discovery = IpAssignment::kStatic;
  service.serviceAddress = "169.254.0.17";
  service.port = 8443;
  return service;
}

HostInterface usbInterface() {
  HostInterface interface;
  interface.handle = 7;
  interface.device = InterfaceDevice::kUsbV2;
  interface.vendorId = 0x0525;
  interface.productId = 0xa4a2;
  interface.mac = kMac;
  interface.services = {service()};
  return interface;
}

NetworkDevice usbCard() {
  NetworkDevice device;
  device.name = "usb0";
  device.mac = kMac;
  device.usbVendorId = 0x0525;
  device.usbProductId = 0xa4a2;
  device.up = true;
  device.addresses = {"169.254.0.18"};
  return device;
}

NetworkDevice otherCard() {
  NetworkDevice device;
  device.name = "eth0";
  device.mac = MacAddress{2, 0, 0, 0, 0, 1};
  device.up = true;
  device.addresses = {"10.0.0.2"};
  return device;
}

ControllerPath pathOf(const HostInterface& interface,
                      const std::vector<NetworkDevice>& devices) {
  const auto paths = controllerPaths({interface}, devices);
  EXPECT_THAT(paths, SizeIs(1));
  return paths.at(0);
}

TEST(ControllerPaths, LeadsToTheStatedAddress) {
  const ControllerPath path = pathOf(usbInterface(), {otherCard(), usbCard()});
  EXPECT_EQ(path.problem, PathProblem::kNone);
  EXPECT_EQ(path.handle, 7);
  EXPECT_EQ(path.device, "usb0");
  EXPECT_EQ(path.address, "169.254.0.17");
  EXPECT_EQ(path.port, 8443);
  EXPECT_EQ(path.serviceUuid, "01112233-4455-6677-8899-aabbccddeeff");
  EXPECT_EQ(problemText(path), "");
}

TEST(ControllerPaths, MacGoesBeforeIds) {
  NetworkDevice twin = usbCard();
  twin.name = "usb1";
  twin.mac = MacAddress{2, 0, 0, 0, 0, 2};
  EXPECT_EQ(pathOf(usbInterface(), {twin, usbCard()}).device, "usb0");
}

TEST(ControllerPaths, IdsMatchWhereNoMacDoes) {
  HostInterface interface = usbInterface();
  NetworkDevice card = usbCard();
  card.mac = MacAddress{2, 0, 0, 0, 0, 2};
  EXPECT_EQ(pathOf(interface, {otherCard(), card}).device, "usb0");
  interface.mac.reset();
  EXPECT_EQ(pathOf(interface, {otherCard(), card}).device, "usb0");
}

TEST(ControllerPaths, ZeroMacMatchesNothing) {
  HostInterface interface = usbInterface();
  interface.mac = MacAddress{};
  NetworkDevice loopback = otherCard();
  loopback.name = "lo";
  loopback.mac = MacAddress{};
  EXPECT_EQ(pathOf(interface, {loopback, usbCard()}).device, "usb0");
}

TEST(ControllerPaths, TwinsWithoutMacGetADeviceEach) {
  HostInterface interface = usbInterface();
  interface.mac.reset();
  NetworkDevice twin = usbCard();
  twin.name = "usb1";
  const auto paths = controllerPaths({interface, interface}, {usbCard(), twin});
  ASSERT_THAT(paths, SizeIs(2));
  EXPECT_EQ(paths[0].device, "usb0");
  EXPECT_EQ(paths[1].device, "usb1");
}

TEST(ControllerPaths, TwoInterfacesMayShareTheOnlyDevice) {
  HostInterface interface = usbInterface();
  interface.mac.reset();
  const auto paths = controllerPaths({interface, interface}, {usbCard()});
  ASSERT_THAT(paths, SizeIs(2));
  EXPECT_EQ(paths[1].device, "usb0");
}

TEST(ControllerPaths, PciIdsIncludeTheSubsystem) {
  HostInterface interface = usbInterface();
  interface.device = InterfaceDevice::kPci;
  interface.mac.reset();
  interface.vendorId = 0x1af4;
  interface.productId = 0x1041;
  interface.subsystemVendorId = 0x1111;
  interface.subsystemId = 0x2222;
  NetworkDevice card = otherCard();
  card.pciVendorId = 0x1af4;
  card.pciDeviceId = 0x1041;
  card.pciSubsystemVendorId = 0x1111;
  EXPECT_EQ(pathOf(interface, {card}).problem, PathProblem::kNoDevice);
  card.pciSubsystemId = 0x2222;
  EXPECT_EQ(pathOf(interface, {card}).device, "eth0");
}

TEST(ControllerPaths, InterfaceWithoutServiceIsTold) {
  HostInterface interface = usbInterface();
  interface.services.clear();
  const ControllerPath path = pathOf(interface, {usbCard()});
  EXPECT_EQ(path.problem, PathProblem::kNoService);
  EXPECT_THAT(problemText(path), HasSubstr("without a Redfish service"));
}

TEST(ControllerPaths, MissingDeviceIsTold) {
  const ControllerPath path = pathOf(usbInterface(), {otherCard()});
  EXPECT_EQ(path.problem, PathProblem::kNoDevice);
  EXPECT_THAT(problemText(path), HasSubstr("no network device matches"));
}

TEST(ControllerPaths, DeviceThatIsDownIsNamed) {
  NetworkDevice card = usbCard();
  card.up = false;
  const ControllerPath path = pathOf(usbInterface(), {card});
  EXPECT_EQ(path.problem, PathProblem::kDown);
  EXPECT_THAT(problemText(path), HasSubstr("ip link set usb0 up"));
  EXPECT_EQ(path.address, "");
}

TEST(ControllerPaths, DeviceWithoutAddressIsNamedWithTheExpectedOne) {
  NetworkDevice card = usbCard();
  card.addresses.clear();
  const ControllerPath path = pathOf(usbInterface(), {card});
  EXPECT_EQ(path.problem, PathProblem::kNoAddress);
  EXPECT_THAT(problemText(path), HasSubstr("usb0"));
  EXPECT_THAT(problemText(path), HasSubstr("expects 169.254.0.18"));
}

TEST(ControllerPaths, AddressOfTheOtherFamilyIsNone) {
  NetworkDevice card = usbCard();
  card.addresses = {"fe80::2"};
  EXPECT_EQ(pathOf(usbInterface(), {card}).problem, PathProblem::kNoAddress);
}

TEST(ControllerPaths, LinkLocalAddressGetsItsZone) {
  HostInterface interface = usbInterface();
  interface.services[0].serviceAddress = "fe80::1";
  NetworkDevice card = usbCard();
  card.addresses.emplace_back("fe80::2");
  EXPECT_EQ(pathOf(interface, {card}).address, "fe80::1%usb0");
}

TEST(ControllerPaths, DiscoveredAddressIsTheHostName) {
  HostInterface interface = usbInterface();
  interface.services[0].discovery = IpAssignment::kDhcp;
  interface.services[0].hostName = "bmc.local";
  EXPECT_EQ(pathOf(interface, {usbCard()}).address, "bmc.local");
}

TEST(ControllerPaths, DiscoveryWithoutHostNameIsLeftToAsking) {
  HostInterface interface = usbInterface();
  interface.services[0].discovery = IpAssignment::kHostSelected;
  const ControllerPath path = pathOf(interface, {usbCard()});
  EXPECT_EQ(path.problem, PathProblem::kUndiscovered);
  EXPECT_EQ(path.device, "usb0");
}

TEST(ControllerPaths, HostNameThatIsNoneIsNotUsed) {
  HostInterface interface = usbInterface();
  interface.services[0].discovery = IpAssignment::kDhcp;
  interface.services[0].hostName = "bmc/../@evil";
  EXPECT_EQ(pathOf(interface, {usbCard()}).problem, PathProblem::kUndiscovered);
}

TEST(ControllerPaths, SecondRecordServesWhereTheFirstCannot) {
  HostInterface interface = usbInterface();
  interface.services.push_back(service());
  interface.services[0].serviceAddress = "fe80::1";
  EXPECT_EQ(pathOf(interface, {usbCard()}).address, "169.254.0.17");
}

TEST(ControllerPaths, KeepTheOrderOfTheInterfaces) {
  HostInterface second = usbInterface();
  second.handle = 8;
  second.services.clear();
  const auto paths = controllerPaths({usbInterface(), second}, {usbCard()});
  ASSERT_THAT(paths, SizeIs(2));
  EXPECT_EQ(paths[0].handle, 7);
  EXPECT_EQ(paths[1].problem, PathProblem::kNoService);
}

}  // namespace
}  // namespace local
