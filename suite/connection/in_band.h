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
/// network devices that lead to them. `base`: how they are to be treated. Each
/// way that is blocked is logged. The controllers of a recorded machine are not
/// looked for: it is another machine.
FoundControllers findControllers(local::Machine& machine, const Target& base);

/// The failure that the machine's IPMI device adds to one of `findControllers`:
/// what was looked for in vain, or that the device does not answer.
base::Failure withIpmi(base::Failure failure, const local::IpmiFinding& ipmi);

}  // namespace connection
