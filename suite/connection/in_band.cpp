#include "suite/connection/in_band.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "suite/base/log.h"
#include "suite/local/controller/controller_path.h"
#include "suite/local/controller/network.h"
#include "suite/local/controller/way_choice.h"
#include "suite/platform/user_paths.h"

namespace connection {
namespace {

using base::Failure;
using base::FailureKind;
using local::Access;
using local::ControllerPath;
using local::ControllerWays;
using local::PathProblem;
using local::WayChoice;

// How long the ways to one controller are tried before one is chosen all the
// same; a controller accepts a connection in milliseconds.
constexpr std::chrono::milliseconds kLongestChoice(5000);

std::string nameAController() {
  return std::string("name a controller by --bmc, or in the settings (") +
         platform::userSettingsPath() + ") by source in [inband]";
}

Failure failureOf(FailureKind kind, std::string cause, std::string remedy) {
  return {kind, "this server", "", std::move(cause), std::move(remedy)};
}

// What else there is for a person to do.
std::string otherWays(local::Machine& machine) {
  std::string ways = nameAController();
  if (machine.describesItself()) {
    ways += "; --device shows what this machine says of itself";
  }
  return ways;
}

// Why the firmware's table tells of no host interface.
Failure noInterface(local::Machine& machine) {
  const std::string& table = machine.tableName();
  switch (machine.table()) {
    case Access::kDenied:
      return failureOf(
          FailureKind::kNotPermitted,
          table +
              ", which lists the parts of this machine and the way to its "
              "controller, may be read by root only",
          "run brivel as root");
    case Access::kMissing:
      return failureOf(FailureKind::kNoHostInterface,
                       "there is no Redfish host interface and no SMBIOS at "
                       "all (" +
                           table + " does not exist)",
                       otherWays(machine));
    case Access::kFailed:
      return failureOf(FailureKind::kFileUnreadable, table + " cannot be read",
                       otherWays(machine));
    case Access::kRead:
      break;
  }
  return failureOf(FailureKind::kNoHostInterface,
                   "the firmware names no Redfish host interface",
                   otherWays(machine));
}

FailureKind kindOf(PathProblem problem) {
  switch (problem) {
    case PathProblem::kDown:
    case PathProblem::kNoAddress:
      return FailureKind::kNoHostAddress;
    case PathProblem::kUndiscovered:
      return FailureKind::kUnreachable;
    case PathProblem::kNone:
    case PathProblem::kNoService:
    case PathProblem::kNoDevice:
      break;
  }
  return FailureKind::kNoHostInterface;
}

FoundController controllerAt(const ControllerPath& path, const Target& base) {
  FoundController found;
  found.target = base;
  found.target.address.host = path.address;
  found.target.address.port = path.port;
  found.serviceUuid = path.serviceUuid;
  found.bootstrapsCredentials = path.bootstrapsCredentials;
  return found;
}

// Logs what is wrong with the ways to a controller. Where none of them is known
// to answer, the first problem is the failure.
void addProblems(const ControllerWays& ways, const WayChoice& choice,
                 FoundControllers& found) {
  for (const ControllerPath& way : ways) {
    if (way.problem == PathProblem::kNone ||
        (way.problem == PathProblem::kUndiscovered &&
         choice.path.problem == PathProblem::kNone)) {
      continue;
    }
    Failure failure = failureOf(kindOf(way.problem), problemText(way), "");
    BRIVEL_LOG(choice.answers ? base::kLogInformation : base::kLogError)
        << describe(failure);
    if (!choice.answers && !found.failure) {
      found.failure = std::move(failure);
      found.pathBlocked = true;
    }
  }
}

}  // namespace

FoundControllers findControllers(local::Machine& machine, const Target& base) {
  FoundControllers found;
  for (const std::string& defect : machine.defects()) {
    BRIVEL_LOG(base::kLogInformation)
        << "this server: " << machine.tableName() << ": " << defect;
  }
  const auto interfaces = machine.hostInterfaces();
  if (interfaces.empty()) {
    found.failure = noInterface(machine);
    return found;
  }
  if (machine.root().recorded()) {
    found.failure =
        failureOf(FailureKind::kNoHostInterface,
                  "the controller of a recorded machine is not asked",
                  otherWays(machine));
    return found;
  }
  const auto devices = local::runningDevices();
  for (const ControllerWays& ways : controllerWays(interfaces, devices)) {
    const WayChoice choice =
        chooseWay(ways, std::min(base.timeout, kLongestChoice));
    if (choice.path.problem == PathProblem::kNone) {
      BRIVEL_LOG(base::kLogInformation)
          << "this server: its network device " << choice.path.device
          << " leads to a controller at " << choice.path.address;
      found.controllers.push_back(controllerAt(choice.path, base));
    }
    addProblems(ways, choice, found);
  }
  return found;
}

Failure withIpmi(Failure failure, const local::IpmiFinding& ipmi) {
  if (failure.kind != FailureKind::kNoHostInterface) {
    return failure;
  }
  switch (ipmi.access) {
    case Access::kMissing:
      failure.cause += ", and there is no IPMI device (" + ipmi.path + ")";
      break;
    case Access::kDenied:
      failure = failureOf(FailureKind::kNotPermitted,
                          ipmi.path + " may be opened by root only",
                          "run brivel as root");
      break;
    case Access::kRead:
    case Access::kFailed:
      failure = failureOf(FailureKind::kIpmiDevice,
                          failure.cause + ", and the IPMI device " + ipmi.path +
                              " does not answer",
                          nameAController());
      break;
  }
  return failure;
}

}  // namespace connection
