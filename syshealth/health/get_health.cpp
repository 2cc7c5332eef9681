#include "syshealth/app/system_health.h"
#include "syshealth/health/dev_health.h"
#include "syshealth/host/trace.h"

using Tarvex::DeviceHealth::Alert;
using Tarvex::DeviceHealth::DevHealth;
using Tarvex::TarvexConnection::ConnectionInfo;

int SystemHealth::getHealth(const ConnectionInfo& connection,
                            std::vector<Alert>& alerts) {
  traceEntering("SystemHealth::getHealth");
  // Replaced, never added to: of several targets the last one's are shown.
  alerts.clear();
  DevHealth client(connection);
  if (const int status = client.connect(); status != 0) {
    SYSHEALTH_LOG(kLogError) << "DevHealth connect failed!";
    return status;
  }
  if (const int status = client.getHealthSum(alerts); status != 0) {
    SYSHEALTH_LOG(kLogError) << "DevHealth getHealthSum failed!";
    return status;
  }
  traceExiting("SystemHealth::getHealth");
  return 0;
}
