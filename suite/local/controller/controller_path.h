#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "suite/local/controller/network.h"
#include "suite/local/smbios/host_interface.h"

namespace local {

/// Why a controller cannot be reached over its host interface.
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
  /// With kNoAddress: the family that the device lacks, "IPv4" or "IPv6";
  /// empty if the firmware does not state it.
  std::string missingFamily;
  /// What the firmware expects this machine's own address there to be; may
  /// be empty.
  std::string expectedAddress;
  std::string serviceUuid;  ///< Empty: not stated.
  bool bootstrapsCredentials = false;
};

/// The ways to one controller, in the order of the firmware; at least one.
using ControllerWays = std::vector<ControllerPath>;

/// The ways to the controllers that the firmware describes, one list for each
/// controller, in its order. Each service of a host interface is a way. Two
/// host interfaces lead to one controller if they state the same service UUID,
/// or the same device and host name. Nothing on the machine is changed: a
/// device that is down, or without an address, is returned as a problem.
std::vector<ControllerWays> controllerWays(
    const std::vector<HostInterface>& interfaces,
    const std::vector<NetworkDevice>& devices);

/// The problem of a way, with the device and the remedy, in one sentence;
/// empty for kNone.
std::string problemText(const ControllerPath& path);

}  // namespace local
