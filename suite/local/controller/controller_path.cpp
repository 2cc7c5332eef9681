#include "suite/local/controller/controller_path.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>

namespace local {
namespace {

bool matches(const HostInterface& interface, const NetworkDevice& device) {
  switch (interface.device) {
    case InterfaceDevice::kUsb:
    case InterfaceDevice::kUsbV2:
      return device.usbVendorId == interface.vendorId &&
             device.usbProductId == interface.productId &&
             device.usbVendorId != 0;
    case InterfaceDevice::kPci:
    case InterfaceDevice::kPciV2:
      return device.pciVendorId == interface.vendorId &&
             device.pciDeviceId == interface.productId &&
             device.pciSubsystemVendorId == interface.subsystemVendorId &&
             device.pciSubsystemId == interface.subsystemId &&
             device.pciVendorId != 0;
    case InterfaceDevice::kOther:
      return false;
  }
  return false;
}

// A MAC address names one device; the ids name a product, of which a machine
// may have several, and serve where no MAC is stated or it matches nothing
// (firmware states the controller's end of the cable now and then).
// Of several devices of one product each interface gets one of its own.
const NetworkDevice* deviceOf(const HostInterface& interface,
                              const std::vector<NetworkDevice>& devices,
                              const std::set<std::string>& taken) {
  static constexpr MacAddress kUnset = {};
  if (interface.mac && *interface.mac != kUnset) {
    const auto found = std::find_if(devices.begin(), devices.end(),
                                    [&](const NetworkDevice& device) {
                                      return device.mac == interface.mac;
                                    });
    if (found != devices.end()) {
      return &*found;
    }
  }
  const NetworkDevice* found = nullptr;
  for (const NetworkDevice& device : devices) {
    if (!matches(interface, device)) {
      continue;
    }
    if (taken.count(device.name) == 0) {
      return &device;
    }
    if (found == nullptr) {
      found = &device;
    }
  }
  return found;
}

bool isIpv6(std::string_view address) {
  return address.find(':') != std::string_view::npos;
}

bool isLinkLocal(std::string_view address) {
  return address.substr(0, 4) == "fe80" && isIpv6(address);
}

bool isHostName(std::string_view name) {
  constexpr std::size_t kLongest = 253;
  return !name.empty() && name.size() <= kLongest &&
         name.find_first_not_of(
             "abcdefghijklmnopqrstuvwxyz"
             "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
             "0123456789.-") == std::string_view::npos;
}

// Where the service is asked for; empty when that has to be discovered.
std::string serviceHost(const RedfishOverIp& service) {
  const bool stated = service.discovery == IpAssignment::kStatic ||
                      service.discovery == IpAssignment::kAutoConfigure;
  if (stated && !service.serviceAddress.empty()) {
    return service.serviceAddress;
  }
  return isHostName(service.hostName) ? service.hostName : std::string();
}

bool hasFamily(const NetworkDevice& device, bool ipv6) {
  return std::any_of(
      device.addresses.begin(), device.addresses.end(),
      [&](const std::string& address) { return isIpv6(address) == ipv6; });
}

ControllerPath pathOver(const RedfishOverIp& service,
                        const NetworkDevice& device) {
  ControllerPath path;
  path.device = device.name;
  path.port = service.port;
  path.expectedAddress = service.hostAddress;
  path.serviceUuid = service.serviceUuid;
  const std::string host = serviceHost(service);
  if (!device.up) {
    path.problem = PathProblem::kDown;
  } else if (device.addresses.empty()) {
    path.problem = PathProblem::kNoAddress;
  } else if (host.empty()) {
    path.problem = PathProblem::kUndiscovered;
  } else if (host == service.serviceAddress &&
             !hasFamily(device, isIpv6(host))) {
    path.problem = PathProblem::kNoAddress;
  } else {
    path.address = isLinkLocal(host) ? host + "%" + device.name : host;
  }
  return path;
}

// The first record whose service can be reached, else the first one.
ControllerPath pathOf(const HostInterface& interface,
                      const NetworkDevice* device) {
  ControllerPath path;
  if (interface.services.empty()) {
    path.problem = PathProblem::kNoService;
  } else if (device == nullptr) {
    path.problem = PathProblem::kNoDevice;
  } else {
    path = pathOver(interface.services.front(), *device);
    for (const RedfishOverIp& service : interface.services) {
      if (path.problem == PathProblem::kNone) {
        break;
      }
      const ControllerPath other = pathOver(service, *device);
      if (other.problem == PathProblem::kNone) {
        path = other;
      }
    }
  }
  path.handle = interface.handle;
  path.bootstrapsCredentials = interface.bootstrapsCredentials;
  return path;
}

}  // namespace

std::vector<ControllerPath> controllerPaths(
    const std::vector<HostInterface>& interfaces,
    const std::vector<NetworkDevice>& devices) {
  std::vector<ControllerPath> paths;
  paths.reserve(interfaces.size());
  std::set<std::string> taken;
  for (const HostInterface& interface : interfaces) {
    const NetworkDevice* device = deviceOf(interface, devices, taken);
    if (device != nullptr) {
      taken.insert(device->name);
    }
    paths.push_back(pathOf(interface, device));
  }
  return paths;
}

std::string problemText(const ControllerPath& path) {
  switch (path.problem) {
    case PathProblem::kNone:
      return "";
    case PathProblem::kNoService:
      return "the firmware describes a host interface without a Redfish "
             "service over IP";
    case PathProblem::kNoDevice:
      return "no network device matches the host interface that the firmware "
             "describes: check that its USB or PCI network device is enabled "
             "in the controller and that its driver is loaded";
    case PathProblem::kDown:
      return "the network device " + path.device +
             " that leads to the controller is down: switch it on (ip link "
             "set " +
             path.device + " up)";
    case PathProblem::kNoAddress:
      return "the network device " + path.device +
             " that leads to the controller has no address: " +
             (path.expectedAddress.empty()
                  ? "configure one as the controller's manual says"
                  : "the firmware expects " + path.expectedAddress +
                        " to be configured there");
    case PathProblem::kUndiscovered:
      return "no controller answers on the network device " + path.device +
             " whose firmware leaves the service's address to discovery";
  }
  return "";
}

}  // namespace local
