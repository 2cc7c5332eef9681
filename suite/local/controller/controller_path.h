#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "suite/local/controller/network.h"
#include "suite/local/smbios/host_interface.h"

namespace local {

/// Why no way leads over a host interface to its controller.
enum class PathProblem {
  kNone,
  kNoService,  ///< The firmware describes no Redfish service over IP.
  kNoDevice,   ///< No network device of this machine matches.
  kDown,       ///< The network device is switched off, or has no link.
  kNoAddress,  ///< It has no address of the service's family.
  /// The service's address is not stated; it has to be asked for on the
  /// network device.
  kUndiscovered
};

/// The way to one management controller of this machine.
struct ControllerPath {
  std::uint16_t handle = 0;  ///< Of the structure that describes it.
  PathProblem problem = PathProblem::kNone;
  std::string device;   ///< The network device, where one matched.
  std::string address;  ///< Host name or address, with the zone where it
                        ///< needs one ("fe80::1%usb0"); empty unless kNone.
  std::uint16_t port = 443;
  /// What the firmware expects this machine's own address there to be; may
  /// be empty.
  std::string expectedAddress;
  std::string serviceUuid;  ///< Empty: not stated.
  bool bootstrapsCredentials = false;
};

/// The ways to the controllers that the firmware describes, in its order.
/// Nothing on the machine is changed: a device that is down, or without an
/// address, is a problem that is told.
std::vector<ControllerPath> controllerPaths(
    const std::vector<HostInterface>& interfaces,
    const std::vector<NetworkDevice>& devices);

/// What stands in the way, with the device and the remedy, in one sentence;
/// empty for kNone.
std::string problemText(const ControllerPath& path);

}  // namespace local
