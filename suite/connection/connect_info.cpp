#include "syshealth/host/connect_info.h"

#include "suite/connection/connections.h"
#include "suite/connection/failure_result.h"
#include "syshealth/result/result_registry.h"

using Tarvex::TarvexConnection::ConnectionInfo;

ConnectInfo* ConnectInfo::Getinstance() {
  static ConnectInfo service;
  return connection::Connections::current() == nullptr ? nullptr : &service;
}

ConnectMode ConnectInfo::GetConMode() {
  const connection::Connections* const run = connection::Connections::current();
  return run == nullptr ? kConnectModeInBand : run->mode();
}

int ConnectInfo::TryCimCon(ConnectionInfo& info) {
  connection::Connections* const run = connection::Connections::current();
  return run == nullptr ? connection::resultOf(base::FailureKind::kInternal)
                        : run->tryTarget(info);
}

ConnectionErr ConnectInfo::GetCimConnectInfo(
    std::vector<ConnectionInfo>& list) {
  connection::Connections* const run = connection::Connections::current();
  return static_cast<ConnectionErr>(
      run == nullptr ? connection::resultOf(base::FailureKind::kInternal)
                     : run->listTargets(list));
}

ConnectionErr ConnectInfo::GetIpmiConnectInfo(
    std::vector<ConnectionInfo>& list) {
  // One Redfish service serves the summary and the inventory alike.
  return GetCimConnectInfo(list);
}

BrivelResult ConnectInfo::ParseCimError(const ConnectionErr& error) {
  // The errors of the two lists are result codes of the suite as a whole.
  // Success is asked about when a list is empty: nobody to connect to.
  constexpr int kLargestSuiteCode = 0xFF;
  const bool known = error > 0 && error <= kLargestSuiteCode;
  BrivelResult result;
  result.code = known ? static_cast<int>(error)
                      : connection::resultOf(base::FailureKind::kUnreachable);
  result.message = getResultMessage(result.code);
  return result;
}
