#pragma once

#include <optional>
#include <string>
#include <vector>

#include "suite/base/failure.h"
#include "suite/connection/settings/target.h"
#include "suite/local/machine.h"

namespace connection {

/// How this machine is read when no target is named.
struct InBandOptions {
  /// How the controllers that it finds are treated; the address is not used.
  Target controller;
  bool bootstrapCredentials = false;  ///< Where `controller` has no user.
  std::string root = "/";  ///< Root of its file systems; see local::Root.
  std::string pciIdsFile;  ///< Empty: where systems keep it.
};

/// A controller that a host interface of this machine leads to.
struct FoundController {
  Target target;
  std::string serviceUuid;  ///< As the firmware states it; empty: not stated.
  bool bootstrapsCredentials = false;  ///< It says that it does.
};

/// The controllers of a machine, in the order of its firmware.
struct FoundControllers {
  std::vector<FoundController> controllers;
  /// Without a controller: why there is none. With some: why the way to
  /// another one is blocked.
  std::optional<base::Failure> failure;
  /// The firmware names a way that leads nowhere, and `failure` says why.
  bool pathBlocked = false;
};

/// Looks for the controllers that the machine's firmware names, and for the
/// network devices that lead to them. `base` holds the settings for them. Logs
/// each way that is blocked. Returns no controller for a recorded machine,
/// because it is another machine.
FoundControllers findControllers(local::Machine& machine, const Target& base);

/// A failure of `findControllers` with the state of the machine's IPMI device
/// added: that there is none either, or that it does not answer.
base::Failure withIpmi(base::Failure failure, const local::IpmiFinding& ipmi);

}  // namespace connection
