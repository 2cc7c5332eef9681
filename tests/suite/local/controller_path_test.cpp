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
  const auto controllers = controllerWays({interface}, devices);
  EXPECT_THAT(controllers, SizeIs(1));
  EXPECT_THAT(controllers.at(0), SizeIs(1));
  return controllers.at(0).at(0);
}

TEST(ControllerWays, LeadsToTheStatedAddress) {
  const ControllerPath path = pathOf(usbInterface(), {otherCard(), usbCard()});
  EXPECT_EQ(path.problem, PathProblem::kNone);
  EXPECT_EQ(path.handle, 7);
  EXPECT_EQ(path.device, "usb0");
  EXPECT_EQ(path.address, "169.254.0.17");
  EXPECT_EQ(path.port, 8443);
  EXPECT_EQ(path.serviceUuid, "01112233-4455-6677-8899-aabbccddeeff");
  EXPECT_EQ(problemText(path), "");
}

TEST(ControllerWays, MacGoesBeforeIds) {
  NetworkDevice twin = usbCard();
  twin.name = "usb1";
  twin.mac = MacAddress{2, 0, 0, 0, 0, 2};
  EXPECT_EQ(pathOf(usbInterface(), {twin, usbCard()}).device, "usb0");
}

TEST(ControllerWays, IdsMatchWhereNoMacDoes) {
  HostInterface interface = usbInterface();
  NetworkDevice card = usbCard();
  card.mac = MacAddress{2, 0, 0, 0, 0, 2};
  EXPECT_EQ(pathOf(interface, {otherCard(), card}).device, "usb0");
  interface.mac.reset();
  EXPECT_EQ(pathOf(interface, {otherCard(), card}).device, "usb0");
}

TEST(ControllerWays, ZeroMacMatchesNothing) {
  HostInterface interface = usbInterface();
  interface.mac = MacAddress{};
  NetworkDevice loopback = otherCard();
  loopback.name = "lo";
  loopback.mac = MacAddress{};
  EXPECT_EQ(pathOf(interface, {loopback, usbCard()}).device, "usb0");
}

// Another controller behind a device of the same product.
HostInterface twinInterface() {
  HostInterface interface = usbInterface();
  interface.mac.reset();
  interface.services[0].serviceUuid = "";
  return interface;
}

TEST(ControllerWays, TwinsWithoutMacGetADeviceEach) {
  NetworkDevice twin = usbCard();
  twin.name = "usb1";
  const auto controllers =
      controllerWays({twinInterface(), twinInterface()}, {usbCard(), twin});
  ASSERT_THAT(controllers, SizeIs(2));
  EXPECT_EQ(controllers[0].at(0).device, "usb0");
  EXPECT_EQ(controllers[1].at(0).device, "usb1");
}

TEST(ControllerWays, TwoInterfacesMayShareTheOnlyDevice) {
  const auto controllers =
      controllerWays({twinInterface(), twinInterface()}, {usbCard()});
  ASSERT_THAT(controllers, SizeIs(2));
  EXPECT_EQ(controllers[1].at(0).device, "usb0");
}

TEST(ControllerWays, OneServiceUuidIsOneController) {
  HostInterface second = usbInterface();
  second.handle = 8;
  second.device = InterfaceDevice::kPciV2;
  second.services[0].serviceAddress = "169.254.1.17";
  NetworkDevice twin = usbCard();
  twin.name = "usb1";
  const auto controllers =
      controllerWays({usbInterface(), second}, {usbCard(), twin});
  ASSERT_THAT(controllers, SizeIs(1));
  ASSERT_THAT(controllers[0], SizeIs(2));
  EXPECT_EQ(controllers[0][0].address, "169.254.0.17");
  EXPECT_EQ(controllers[0][1].address, "169.254.1.17");
  EXPECT_EQ(controllers[0][1].device, "usb0");
  EXPECT_EQ(controllers[0][1].handle, 8);
}

TEST(ControllerWays, OneDeviceAndHostNameIsOneController) {
  HostInterface first = twinInterface();
  first.services[0].hostName = "bmc-7";
  HostInterface second = first;
  second.device = InterfaceDevice::kUsb;  // The first version of the structure.
  second.services[0].hostName = "BMC-7";
  NetworkDevice twin = usbCard();
  twin.name = "usb1";
  const auto controllers = controllerWays({first, second}, {usbCard(), twin});
  ASSERT_THAT(controllers, SizeIs(1));
  ASSERT_THAT(controllers[0], SizeIs(2));
  EXPECT_EQ(controllers[0][1].device, "usb0");

  second.services[0].hostName = "bmc-8";
  EXPECT_THAT(controllerWays({first, second}, {usbCard(), twin}), SizeIs(2));
  second.services[0].hostName = "bmc-7";
  second.productId = 0xa4a3;
  EXPECT_THAT(controllerWays({first, second}, {usbCard(), twin}), SizeIs(2));
}

TEST(ControllerWays, PciIdsIncludeTheSubsystem) {
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

TEST(ControllerWays, InterfaceWithoutServiceIsTold) {
  HostInterface interface = usbInterface();
  interface.services.clear();
  const ControllerPath path = pathOf(interface, {usbCard()});
  EXPECT_EQ(path.problem, PathProblem::kNoService);
  EXPECT_THAT(problemText(path), HasSubstr("without a Redfish service"));
}

TEST(ControllerWays, MissingDeviceIsTold) {
  const ControllerPath path = pathOf(usbInterface(), {otherCard()});
  EXPECT_EQ(path.problem, PathProblem::kNoDevice);
  EXPECT_THAT(problemText(path), HasSubstr("no network device matches"));
}

TEST(ControllerWays, DeviceThatIsDownIsNamed) {
  NetworkDevice card = usbCard();
  card.up = false;
  const ControllerPath path = pathOf(usbInterface(), {card});
  EXPECT_EQ(path.problem, PathProblem::kDown);
  EXPECT_THAT(problemText(path), HasSubstr("ip link set usb0 up"));
  EXPECT_EQ(path.address, "");
}

TEST(ControllerWays, DeviceWithoutAddressIsNamedWithTheExpectedOne) {
  NetworkDevice card = usbCard();
  card.addresses.clear();
  const ControllerPath path = pathOf(usbInterface(), {card});
  EXPECT_EQ(path.problem, PathProblem::kNoAddress);
  EXPECT_THAT(problemText(path), HasSubstr("usb0"));
  EXPECT_THAT(problemText(path), HasSubstr("expects 169.254.0.18"));
}

TEST(ControllerWays, AddressOfTheOtherFamilyIsNone) {
  NetworkDevice card = usbCard();
  card.addresses = {"fe80::2"};
  const ControllerPath path = pathOf(usbInterface(), {card});
  EXPECT_EQ(path.problem, PathProblem::kNoAddress);
  EXPECT_THAT(problemText(path), HasSubstr("usb0 that leads to the controller "
                                           "has no IPv4 address"));
}

TEST(ControllerWays, MissingFamilyIsNamed) {
  HostInterface interface = usbInterface();
  interface.services[0].serviceAddress = "fe80::1";
  EXPECT_THAT(problemText(pathOf(interface, {usbCard()})),
              HasSubstr("has no IPv6 address"));
  interface.services[0].discovery = IpAssignment::kDhcp;
  NetworkDevice card = usbCard();
  card.addresses.clear();
  EXPECT_THAT(problemText(pathOf(interface, {card})),
              HasSubstr("has no address"));
}

TEST(ControllerWays, LinkLocalAddressGetsItsZone) {
  HostInterface interface = usbInterface();
  interface.services[0].serviceAddress = "fe80::1";
  NetworkDevice card = usbCard();
  card.addresses.emplace_back("fe80::2");
  EXPECT_EQ(pathOf(interface, {card}).address, "fe80::1%usb0");
}

TEST(ControllerWays, DiscoveredAddressIsTheHostName) {
  HostInterface interface = usbInterface();
  interface.services[0].discovery = IpAssignment::kDhcp;
  interface.services[0].hostName = "bmc.local";
  EXPECT_EQ(pathOf(interface, {usbCard()}).address, "bmc.local");
}

TEST(ControllerWays, DiscoveryWithoutHostNameIsLeftToAsking) {
  HostInterface interface = usbInterface();
  interface.services[0].discovery = IpAssignment::kHostSelected;
  const ControllerPath path = pathOf(interface, {usbCard()});
  EXPECT_EQ(path.problem, PathProblem::kUndiscovered);
  EXPECT_EQ(path.device, "usb0");
}

TEST(ControllerWays, HostNameThatIsNoneIsNotUsed) {
  HostInterface interface = usbInterface();
  interface.services[0].discovery = IpAssignment::kDhcp;
  interface.services[0].hostName = "bmc/../@evil";
  EXPECT_EQ(pathOf(interface, {usbCard()}).problem, PathProblem::kUndiscovered);
}

TEST(ControllerWays, EachServiceOfAnInterfaceIsAWay) {
  HostInterface interface = usbInterface();
  interface.services.push_back(service());
  interface.services[0].serviceAddress = "fe80::1";
  const auto controllers = controllerWays({interface}, {usbCard()});
  ASSERT_THAT(controllers, SizeIs(1));
  ASSERT_THAT(controllers[0], SizeIs(2));
  EXPECT_EQ(controllers[0][0].problem, PathProblem::kNoAddress);
  EXPECT_EQ(controllers[0][1].address, "169.254.0.17");
}

TEST(ControllerWays, KeepTheOrderOfTheInterfaces) {
  HostInterface second = usbInterface();
  second.handle = 8;
  second.services.clear();
  const auto controllers =
      controllerWays({usbInterface(), second}, {usbCard()});
  ASSERT_THAT(controllers, SizeIs(2));
  EXPECT_EQ(controllers[0].at(0).handle, 7);
  EXPECT_EQ(controllers[1].at(0).problem, PathProblem::kNoService);
}

}  // namespace
}  // namespace local
