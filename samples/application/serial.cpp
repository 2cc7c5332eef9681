// A small application: `brivel serial` prints the serial number of each
// target, one a line.

#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

#include "syshealth/app/entry_points.h"
#include "syshealth/health/dev_health.h"
#include "syshealth/host/arg_parser.h"
#include "syshealth/host/connect_info.h"
#include "syshealth/host/log.h"

using Tarvex::DeviceHealth::DevHealth;
using Tarvex::DeviceHealth::SystemBoard;
using Tarvex::TarvexConnection::ConnectionInfo;

namespace {

// Numbers from 1000 on are free.
constexpr int kAppId = 1000;
constexpr std::int32_t kGenericFailure = 1;

BrivelResult failure(const std::string& message) {
  BrivelResult result;
  result.code = kGenericFailure;
  result.message = message;
  return result;
}

}  // namespace

void Init() { ArgParser::GetInstance()->RegisterApp("serial", kAppId); }

std::int32_t ParamRegister(std::int32_t /*command*/) {
  return ArgParser::GetInstance()->RegisterOption(kAppId, "");
}

BrivelResult AppMain(std::int32_t /*command*/) {
  ConnectInfo* const connections = ConnectInfo::Getinstance();
  std::vector<ConnectionInfo> targets;
  const ConnectionErr error = connections->GetCimConnectInfo(targets);
  if (error != kConnectionErrNone) {
    return connections->ParseCimError(error);
  }
  for (const ConnectionInfo& target : targets) {
    SystemBoard board;
    if (DevHealth(target).get_system(board) != 0) {
      return failure("The serial number of " + target.address +
                     " cannot be read.");
    }
    Tarvex::Log(3, __FILE__, __LINE__).Stream() << "read " << target.address;
    std::cout << board.serialNumber << "\n";
  }
  return BrivelResult();
}
