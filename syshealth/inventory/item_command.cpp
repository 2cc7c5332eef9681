#include <optional>

#include "syshealth/app/system_health.h"
#include "syshealth/health/dev_health.h"
#include "syshealth/host/command_failure.h"
#include "syshealth/host/target_selection.h"
#include "syshealth/host/trace.h"
#include "syshealth/result/health_status.h"

using Tarvex::DeviceHealth::DevHealth;
using Tarvex::TarvexConnection::ConnectionInfo;

namespace {

constexpr const char* kOperation = "SystemHealth::showSystemItem";

// Reads one kind of component and, where that succeeds, prints it. The getter
// connects by itself.
template <typename Record>
int reportComponent(SystemHealth& application, DevHealth& client,
                    int (DevHealth::*read)(Record&),
                    void (SystemHealth::*show)(const Record&)) {
  Record record;
  const int status = (client.*read)(record);
  if (status == 0) {
    (application.*show)(record);
  }
  return status;
}

// The status of the item's report; nothing for a name that no item has.
std::optional<int> reportItem(SystemHealth& application, DevHealth& client,
                              const std::string& item) {
  if (item == "system") {
    return reportComponent(application, client, &DevHealth::get_system,
                           &SystemHealth::showSystem);
  }
  if (item == "processor") {
    return reportComponent(application, client, &DevHealth::get_processors,
                           &SystemHealth::showProcessors);
  }
  if (item == "fan") {
    return reportComponent(application, client, &DevHealth::get_fans,
                           &SystemHealth::showFans);
  }
  if (item == "dimm") {
    return reportComponent(application, client, &DevHealth::get_DIMMs,
                           &SystemHealth::showDIMMs);
  }
  if (item == "power") {
    return reportComponent(application, client, &DevHealth::get_Powers,
                           &SystemHealth::showPowers);
  }
  if (item == "pci_adapter") {
    return reportComponent(application, client, &DevHealth::get_PCIApaters,
                           &SystemHealth::showPCIAdapters);
  }
  return std::nullopt;
}

}  // namespace

std::int32_t SystemHealth::showSystemItem(const std::string& item,
                                          ConnectMode mode) {
  traceEntering(kOperation);
  ConnectInfo* const settings = ConnectInfo::Getinstance();
  if (settings == nullptr) {
    return failMissingService();
  }
  std::vector<ConnectionInfo> targets;
  const ConnectionErr error = settings->GetCimConnectInfo(targets);
  if (error != kConnectionErrNone || targets.empty()) {
    return failTargetList(error, "Brivel failed to show system information.");
  }

  switch (selectTargets(mode, targets)) {
    case TargetSelection::kInvalidNode:
      return failInvalidNode();
    case TargetSelection::kUnsupportedMode:
      return failRead(kHealthNotSupported,
                      "Brivel failed to show system items.", kOperation);
    case TargetSelection::kPicked:
      break;
  }
  for (const ConnectionInfo& target : targets) {
    if (const int status = getSystemItems(target, item); status != 0) {
      return failRead(status, "Brivel failed to show " + item + " information.",
                      kOperation);
    }
  }
  return healthStatusToResult(kHealthSuccess);
}

int SystemHealth::getSystemItems(const ConnectionInfo& connection,
                                 const std::string& item) {
  traceEntering("SystemHealth::getSystemItems");
  DevHealth client(connection);
  const std::optional<int> status = reportItem(*this, client, item);
  // A failed read is the one way out without the exit trace.
  if (!status.has_value() || *status == 0) {
    traceExiting("SystemHealth::getSystemItems");
  }
  return status.value_or(kHealthNotSupported);
}
