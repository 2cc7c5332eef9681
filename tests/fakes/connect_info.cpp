#include "syshealth/host/connect_info.h"

#include <string>

#include "tests/fakes/script.h"

using Tarvex::TarvexConnection::ConnectionInfo;

namespace {

bool isDefault(const ConnectionInfo& info) {
  return info.address.empty() && info.port == 0 && info.user.empty() &&
         info.credential.empty() && info.nodeIndex == 0 && info.protocol == 3 &&
         info.firstNode == 0 && info.service == 0;
}

}  // namespace

ConnectInfo* ConnectInfo::Getinstance() {
  static ConnectInfo settings;
  fakes::enter("ConnectInfo::Getinstance()");
  int& fetches = fakes::script().settingsFetches;
  if (fetches == 0) {
    return nullptr;
  }
  if (fetches > 0) {
    --fetches;
  }
  return &settings;
}

ConnectMode ConnectInfo::GetConMode() {
  fakes::enter("ConnectInfo::GetConMode()");
  return fakes::script().mode;
}

int ConnectInfo::TryCimCon(ConnectionInfo& info) {
  fakes::enter(std::string("ConnectInfo::TryCimCon(") +
               (isDefault(info) ? "default" : "changed") + " record)");
  info.address = "reached";
  return fakes::script().reachability;
}

ConnectionErr ConnectInfo::GetCimConnectInfo(
    std::vector<ConnectionInfo>& list) {
  fakes::enter("ConnectInfo::GetCimConnectInfo(list of " +
               std::to_string(list.size()) + ")");
  list = fakes::script().cimTargets;
  return fakes::script().cimError;
}

ConnectionErr ConnectInfo::GetIpmiConnectInfo(
    std::vector<ConnectionInfo>& list) {
  fakes::enter("ConnectInfo::GetIpmiConnectInfo(list of " +
               std::to_string(list.size()) + ")");
  list = fakes::script().ipmiTargets;
  return fakes::script().ipmiError;
}

BrivelResult ConnectInfo::ParseCimError(const ConnectionErr& error) {
  fakes::enter("ConnectInfo::ParseCimError(" +
               std::to_string(static_cast<int>(error)) + ")");
  return fakes::script().parsedError;
}
