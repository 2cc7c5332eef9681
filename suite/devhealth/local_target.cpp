#include "suite/devhealth/local_target.h"

#include <string>
#include <utility>

#include "suite/base/failure.h"
#include "suite/base/log.h"
#include "suite/devhealth/inventory/local_inventory.h"
#include "syshealth/result/health_status.h"

namespace devhealth {
namespace {

using base::Failure;
using base::FailureKind;
using local::Access;

Unread fail(FailureKind kind, int status, std::string cause,
            std::string remedy) {
  Failure failure{kind, "this server", "", std::move(cause), std::move(remedy)};
  BRIVEL_LOG(base::kLogError) << describe(failure);
  return {std::move(failure), status, Extent::kItem};
}

}  // namespace

std::optional<Unread> LocalTarget::requireMachine() {
  if (machine_ != nullptr) {
    return std::nullopt;
  }
  Unread unread = fail(FailureKind::kUnreachable, kHealthNoConnection,
                       "there is no connection to this target", "");
  unread.extent = Extent::kTarget;
  return unread;
}

std::optional<Unread> LocalTarget::requireTable() {
  if (auto unread = requireMachine()) {
    return unread;
  }
  const std::string& table = machine_->tableName();
  switch (machine_->table()) {
    case Access::kRead:
      return std::nullopt;
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

std::optional<Unread> LocalTarget::system(report::System& system) {
  if (auto unread = requireMachine()) {
    return unread;
  }
  report::System found = systemOf(machine_->system(), machine_->board());
  const bool known = !found.name.empty() || !found.typeModel.empty() ||
                     !found.serialNumber.empty() || !found.uuid.empty();
  if (!known) {
    return requireTable();
  }
  system = std::move(found);
  return std::nullopt;
}

std::optional<Unread> LocalTarget::processors(
    std::vector<report::Processor>& processors) {
  auto unread = requireTable();
  if (!unread) {
    processors = processorsOf(machine_->processors());
  }
  return unread;
}

std::optional<Unread> LocalTarget::fans(std::vector<report::Fan>& fans) {
  if (auto unread = requireMachine()) {
    return unread;
  }
  if (!machine_->hasFanSource()) {
    return fail(FailureKind::kNoHostInterface, kHealthNotSupported,
                "this operating system tells programs nothing of its fans",
                "name a controller by --bmc");
  }
  fans = fansOf(machine_->fans());
  return std::nullopt;
}

std::optional<Unread> LocalTarget::memory(
    std::vector<report::MemoryModule>& modules) {
  auto unread = requireTable();
  if (!unread) {
    modules = dimmsOf(machine_->memory());
  }
  return unread;
}

std::optional<Unread> LocalTarget::powerSupplies(
    std::vector<report::PowerSupply>& supplies) {
  auto unread = requireTable();
  if (!unread) {
    supplies = powersOf(machine_->supplies());
  }
  return unread;
}

std::optional<Unread> LocalTarget::pciAdapters(
    std::vector<report::PciAdapter>& adapters) {
  auto unread = requireMachine();
  if (!unread) {
    adapters = pciAdaptersOf(machine_->adapters());
  }
  return unread;
}

std::optional<Unread> LocalTarget::connect() { return std::nullopt; }

std::optional<Unread> LocalTarget::events(
    std::vector<report::Event>& /*events*/) {
  return fail(FailureKind::kNoHostInterface, kHealthNotSupported,
              "only a management controller keeps a list of active events",
              "name one by --bmc");
}

std::optional<std::size_t> LocalTarget::memoryPlaces() {
  return machine_ == nullptr ? std::nullopt : machine_->memoryPlaces();
}

}  // namespace devhealth
