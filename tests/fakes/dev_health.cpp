#include "syshealth/health/dev_health.h"

#include <string>

#include "tests/fakes/journal.h"
#include "tests/fakes/script.h"

namespace Tarvex::DeviceHealth {
namespace {

const fakes::TargetScript& targetScript(
    const TarvexConnection::ConnectionInfo& connection) {
  return fakes::script().targets[connection.address];
}

// Hands a list over, noting whether it came empty.
template <typename Record>
int give(const char* getter, const std::vector<Record>& from,
         std::vector<Record>& to, int status) {
  fakes::enter(std::string("DevHealth::") + getter + "(list of " +
               std::to_string(to.size()) + ")");
  to = from;
  return status;
}

}  // namespace

// NOLINTNEXTLINE(modernize-pass-by-value): the signature is the suite's.
DevHealth::DevHealth(const TarvexConnection::ConnectionInfo& connection)
    : connection_(connection) {
  fakes::enter("DevHealth(" + connection_.address + ")");
}

DevHealth::~DevHealth() { fakes::note(fakes::Kind::kCall, "~DevHealth()"); }

int DevHealth::connect() {
  fakes::enter("DevHealth::connect()");
  return targetScript(connection_).connectStatus;
}

int DevHealth::getHealthSum(std::vector<Alert>& alerts) {
  const fakes::TargetScript& target = targetScript(connection_);
  return give("getHealthSum", target.alerts, alerts, target.healthStatus);
}

int DevHealth::get_system(SystemBoard& system) {
  const bool empty = system.machineName.empty() &&
                     system.machineTypeModel.empty() &&
                     system.serialNumber.empty() && system.uuid.empty();
  fakes::enter(std::string("DevHealth::get_system(") +
               (empty ? "empty" : "filled") + " record)");
  const fakes::TargetScript& target = targetScript(connection_);
  system = target.system;
  return target.readStatus;
}

int DevHealth::get_processors(std::vector<Processor>& processors) {
  const fakes::TargetScript& target = targetScript(connection_);
  return give("get_processors", target.processors, processors,
              target.readStatus);
}

int DevHealth::get_fans(std::vector<Fan>& fans) {
  const fakes::TargetScript& target = targetScript(connection_);
  return give("get_fans", target.fans, fans, target.readStatus);
}

int DevHealth::get_DIMMs(std::vector<DIMM>& dimms) {
  const fakes::TargetScript& target = targetScript(connection_);
  return give("get_DIMMs", target.dimms, dimms, target.readStatus);
}

int DevHealth::get_Powers(std::vector<Power>& powers) {
  const fakes::TargetScript& target = targetScript(connection_);
  return give("get_Powers", target.powers, powers, target.readStatus);
}

int DevHealth::get_PCIApaters(std::vector<PCIAdapter>& adapters) {
  const fakes::TargetScript& target = targetScript(connection_);
  return give("get_PCIApaters", target.adapters, adapters, target.readStatus);
}

}  // namespace Tarvex::DeviceHealth
