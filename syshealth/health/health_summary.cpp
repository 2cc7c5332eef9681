#include <algorithm>

#include "syshealth/app/system_health.h"
#include "syshealth/health/orvane_type.h"
#include "syshealth/host/command_failure.h"
#include "syshealth/host/target_selection.h"
#include "syshealth/host/trace.h"
#include "syshealth/result/health_status.h"

using Tarvex::Agentless::kOrvaneTypeDravik;
using Tarvex::Agentless::kOrvaneTypeUnknown;
using Tarvex::Agentless::OrvaneTypeAcquire;
using Tarvex::Agentless::OrvaneTypeValue;
using Tarvex::DeviceHealth::Alert;
using Tarvex::TarvexConnection::ConnectionInfo;

namespace {

constexpr const char* kOperation = "SystemHealth::showHealthSummary";
constexpr const char* kFailureLine = "Brivel failed to show system health.";

}  // namespace

std::int32_t SystemHealth::showHealthSummary(std::int32_t connectionMode) {
  traceEntering(kOperation);
  ConnectionInfo record;
  ConnectInfo* settings = ConnectInfo::Getinstance();
  if (settings == nullptr) {
    return failMissingService();
  }
  if (const int code = settings->TryCimCon(record); code != 0) {
    return failWithCode(code, kFailureLine);
  }

  OrvaneTypeAcquire probe(record);
  OrvaneTypeValue generation = kOrvaneTypeUnknown;
  if (probe.GetOrvaneType(generation) != 0) {
    return failConnection(kFailureLine);
  }
  SYSHEALTH_LOG(kLogInformation)
      << "system health succeeded in getting bmc_type: "
      << static_cast<std::int32_t>(generation);
  if (generation != kOrvaneTypeDravik) {
    return failNotSupported(kFailureLine);
  }

  settings = ConnectInfo::Getinstance();
  if (settings == nullptr) {
    return failMissingService();
  }
  std::vector<ConnectionInfo> targets;
  const ConnectionErr error = settings->GetIpmiConnectInfo(targets);
  if (error != kConnectionErrNone || targets.empty()) {
    return failTargetList(error, kFailureLine);
  }

  switch (selectTargets(connectionMode, targets)) {
    case TargetSelection::kInvalidNode:
      return failInvalidNode();
    case TargetSelection::kUnsupportedMode:
      return failRead(kHealthNotSupported, kFailureLine, kOperation);
    case TargetSelection::kPicked:
      break;
  }
  std::vector<Alert> alerts;
  for (const ConnectionInfo& target : targets) {
    if (const int status = getHealth(target, alerts); status != 0) {
      return failRead(status, kFailureLine, kOperation);
    }
  }

  std::sort(alerts.begin(), alerts.end(), [](const Alert& a, const Alert& b) {
    return a.severity < b.severity;
  });
  showHealth(alerts);
  traceExiting(kOperation);
  return healthStatusToResult(kHealthSuccess);
}
