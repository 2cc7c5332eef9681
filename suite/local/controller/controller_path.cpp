#include "suite/local/controller/controller_path.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/host_name.h"
#include "suite/base/time_limit.h"

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

// The controllers to which network devices lead, by the device's name.
using Takers = std::map<std::string, std::size_t>;

// A MAC address names one device; the ids name a product, of which a machine
// may have several, and serve where no MAC is stated or it matches nothing
// (firmware states the controller's end of the cable now and then).
// Of several devices of one product each controller gets one of its own.
const NetworkDevice* deviceOf(const HostInterface& interface,
                              std::size_t controller,
                              const std::vector<NetworkDevice>& devices,
                              const Takers& takers) {
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
    const auto taker = takers.find(device.name);
    if (taker == takers.end() || taker->second == controller) {
      return &device;
    }
    if (found == nullptr) {
      found = &device;
    }
  }
  return found;
}

bool isUsb(InterfaceDevice device) {
  return device == InterfaceDevice::kUsb || device == InterfaceDevice::kUsbV2;
}

// Whether two host interfaces state the same device, as far as both tell: the
// first versions of the structure have neither MAC address nor place.
bool sameDevice(const HostInterface& a, const HostInterface& b) {
  if (a.device == InterfaceDevice::kOther ||
      b.device == InterfaceDevice::kOther) {
    return false;
  }
  return isUsb(a.device) == isUsb(b.device) && a.vendorId == b.vendorId &&
         a.productId == b.productId &&
         a.subsystemVendorId == b.subsystemVendorId &&
         a.subsystemId == b.subsystemId &&
         (!a.mac || !b.mac || a.mac == b.mac) &&
         (!a.pci || !b.pci || a.pci == b.pci);
}

// Whether two host interfaces lead to the same controller.
bool sameController(const HostInterface& a, const HostInterface& b) {
  base::heedTime();
  const bool device = sameDevice(a, b);
  for (const RedfishOverIp& one : a.services) {
    for (const RedfishOverIp& other : b.services) {
      base::heedTime();
      const bool sameUuid =
          !one.serviceUuid.empty() && one.serviceUuid == other.serviceUuid;
      const bool sameName =
          !one.hostName.empty() &&
          base::equalIgnoringCase(one.hostName, other.hostName);
      if (sameUuid || (device && sameName)) {
        return true;
      }
    }
  }
  return false;
}

// Where the service is asked for; empty when that has to be discovered.
std::string serviceHost(const RedfishOverIp& service) {
  const bool stated = service.discovery == IpAssignment::kStatic ||
                      service.discovery == IpAssignment::kAutoConfigure;
  if (stated && !service.serviceAddress.empty()) {
    return service.serviceAddress;
  }
  return base::isHostName(service.hostName) ? service.hostName : std::string();
}

bool hasFamily(const NetworkDevice& device, bool ipv6) {
  return std::any_of(device.addresses.begin(), device.addresses.end(),
                     [&](const std::string& address) {
                       return base::isIpv6Host(address) == ipv6;
                     });
}

std::string_view familyOf(std::string_view address) {
  return base::isIpv6Host(address) ? "IPv6" : "IPv4";
}

ControllerPath pathOver(const RedfishOverIp& service,
                        const NetworkDevice& device) {
  ControllerPath path;
  path.device = device.name;
  path.port = service.port;
  path.expectedAddress = service.hostAddress;
  path.serviceUuid = service.serviceUuid;
  const std::string host = serviceHost(service);
  const bool stated = !host.empty() && host == service.serviceAddress;
  if (!device.up) {
    path.problem = PathProblem::kDown;
  } else if (device.addresses.empty() ||
             (stated && !hasFamily(device, base::isIpv6Host(host)))) {
    path.problem = PathProblem::kNoAddress;
    path.missingFamily = stated ? familyOf(host) : "";
  } else if (host.empty()) {
    path.problem = PathProblem::kUndiscovered;
  } else {
    path.address = base::isLinkLocal(host) ? host + "%" + device.name : host;
  }
  return path;
}

// The ways that a host interface describes: one for each of its services.
ControllerWays waysOver(const HostInterface& interface,
                        const NetworkDevice* device) {
  ControllerWays ways;
  if (interface.services.empty() || device == nullptr) {
    ControllerPath path;
    path.problem = interface.services.empty() ? PathProblem::kNoService
                                              : PathProblem::kNoDevice;
    ways.push_back(std::move(path));
  } else {
    for (const RedfishOverIp& service : interface.services) {
      ways.push_back(pathOver(service, *device));
    }
  }
  for (ControllerPath& path : ways) {
    path.handle = interface.handle;
    path.bootstrapsCredentials = interface.bootstrapsCredentials;
  }
  return ways;
}

}  // namespace

std::vector<ControllerWays> controllerWays(
    const std::vector<HostInterface>& interfaces,
    const std::vector<NetworkDevice>& devices) {
  std::vector<ControllerWays> controllers;
  std::vector<const HostInterface*> firsts;  // Of each controller.
  Takers takers;
  for (const HostInterface& interface : interfaces) {
    const auto known = std::find_if(firsts.begin(), firsts.end(),
                                    [&](const HostInterface* first) {
                                      return sameController(*first, interface);
                                    });
    const auto controller = static_cast<std::size_t>(known - firsts.begin());
    if (known == firsts.end()) {
      firsts.push_back(&interface);
      controllers.emplace_back();
    }
    const NetworkDevice* device =
        deviceOf(interface, controller, devices, takers);
    if (device != nullptr) {
      takers.emplace(device->name, controller);
    }
    for (ControllerPath& way : waysOver(interface, device)) {
      controllers[controller].push_back(std::move(way));
    }
  }
  return controllers;
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
             " that leads to the controller has no " +
             (path.missingFamily.empty() ? "" : path.missingFamily + " ") +
             "address: " +
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
