#include "suite/devhealth/local_target.h"

#include <string>
#include <utility>

#include "suite/base/failure.h"
#include "suite/devhealth/inventory/local_inventory.h"
#include "suite/run/run.h"
#include "syshealth/host/log.h"
#include "syshealth/result/health_status.h"

namespace devhealth {
namespace {

using base::Failure;
using base::FailureKind;
using local::Access;

int fail(FailureKind kind, int status, std::string cause, std::string remedy) {
  Failure failure{kind, "this server", "", std::move(cause), std::move(remedy)};
  Tarvex::Log(1, __FILE__, __LINE__).Stream() << describe(failure);
  if (run::Run* current = run::Run::current()) {
    current->report(std::move(failure));
  }
  return status;
}

}  // namespace

bool LocalTarget::is(
    const Tarvex::TarvexConnection::ConnectionInfo& connection) {
  return connection.service == run::kThisMachine;
}

LocalTarget::LocalTarget()
    : machine_(run::Run::current() == nullptr
                   ? nullptr
                   : run::Run::current()->machine()) {}

int LocalTarget::requireMachine() {
  if (machine_ != nullptr) {
    return kHealthSuccess;
  }
  return fail(FailureKind::kUnreachable, kHealthNoConnection,
              "there is no connection to this target", "");
}

int LocalTarget::requireTable() {
  if (const int status = requireMachine()) {
    return status;
  }
  const std::string& table = machine_->tableName();
  switch (machine_->table()) {
    case Access::kRead:
      return kHealthSuccess;
    case Access::kDenied:
      return fail(FailureKind::kNotPermitted, kHealthNotSupported,
                  table +
                      ", which lists the parts of this machine and the way to "
                      "its controller, may be read by root only",
                  "run brivel as root");
    case Access::kMissing:
      return fail(FailureKind::kNoHostInterface, kHealthNotSupported,
                  "neither a controller nor SMBIOS (" + table +
                      " does not exist) tells of its system board, "
                      "processors, memory modules and power supplies; "
                      "containers and some boards have none",
                  "name a controller by --bmc");
    case Access::kFailed:
      break;
  }
  return fail(FailureKind::kFileUnreadable, kHealthReadFailed,
              table + ", which lists the parts of this machine, cannot be read",
              "");
}

int LocalTarget::system(Tarvex::DeviceHealth::SystemBoard& system) {
  if (const int status = requireMachine()) {
    return status;
  }
  system = systemBoardOf(machine_->system(), machine_->board());
  const bool known = !system.machineName.empty() ||
                     !system.machineTypeModel.empty() ||
                     !system.serialNumber.empty() || !system.uuid.empty();
  return known ? kHealthSuccess : requireTable();
}

int LocalTarget::processors(
    std::vector<Tarvex::DeviceHealth::Processor>& processors) {
  const int status = requireTable();
  if (status == kHealthSuccess) {
    processors = processorsOf(machine_->processors());
  }
  return status;
}

int LocalTarget::fans(std::vector<Tarvex::DeviceHealth::Fan>& fans) {
  if (const int status = requireMachine()) {
    return status;
  }
  if (!machine_->hasFanSource()) {
    return fail(FailureKind::kNoHostInterface, kHealthNotSupported,
                "this operating system tells programs nothing of its fans",
                "name a controller by --bmc");
  }
  fans = fansOf(machine_->fans());
  return kHealthSuccess;
}

int LocalTarget::dimms(std::vector<Tarvex::DeviceHealth::DIMM>& dimms) {
  const int status = requireTable();
  if (status == kHealthSuccess) {
    dimms = dimmsOf(machine_->memory());
  }
  return status;
}

int LocalTarget::powers(std::vector<Tarvex::DeviceHealth::Power>& powers) {
  const int status = requireTable();
  if (status == kHealthSuccess) {
    powers = powersOf(machine_->supplies());
  }
  return status;
}

int LocalTarget::pciAdapters(
    std::vector<Tarvex::DeviceHealth::PCIAdapter>& adapters) {
  const int status = requireMachine();
  if (status == kHealthSuccess) {
    adapters = pciAdaptersOf(machine_->adapters());
  }
  return status;
}

int LocalTarget::connect() { return kHealthSuccess; }

int LocalTarget::health(std::vector<Tarvex::DeviceHealth::Alert>&) {
  return fail(FailureKind::kNoHostInterface, kHealthNotSupported,
              "only a management controller keeps a list of active events",
              "name one by --bmc");
}

}  // namespace devhealth
