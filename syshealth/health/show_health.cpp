#include <boost/format.hpp>
#include <iomanip>

#include "syshealth/app/system_health.h"
#include "syshealth/health/name_tables.h"
#include "syshealth/host/console_line.h"
#include "syshealth/host/report_table.h"
#include "syshealth/host/trace.h"

using Tarvex::DeviceHealth::Alert;

namespace {

// The alerts come in ascending severity, so that the last one of a category,
// whose severity the bucket keeps, is its worst.
void fillBuckets(std::vector<AlertCategoryBucket>& buckets,
                 const std::vector<Alert>& alerts) {
  for (AlertCategoryBucket& bucket : buckets) {
    for (const Alert& alert : alerts) {
      if (alert.category == bucket.name) {
        bucket.status = alert.severity;
        bucket.alerts.push_back(alert);
      }
    }
  }
}

// Unchecked: the device-health client delivers 0 to 2.
const std::string& severityName(std::int32_t severity) {
  return AlertSeverityNames[static_cast<std::size_t>(severity)];
}

}  // namespace

void SystemHealth::showHealth(std::vector<Alert>& alerts) {
  traceEntering("SystemHealth::showHealth");
  fillBuckets(categoryBuckets, alerts);

  boost::format columns("%1% %2% ");
  columns.modify_item(
      1, boost::io::group(std::left, std::setfill(' '), std::setw(30)));

  printReport("");
  printReport("==================================");
  for (const AlertCategoryBucket& bucket : categoryBuckets) {
    printRow(columns, {bucket.name, severityName(bucket.status)});
  }
  printReport("");
  printReport("Active Events with Error/Warning:");
  for (const AlertCategoryBucket& bucket : categoryBuckets) {
    for (const Alert& alert : bucket.alerts) {
      printRow(columns, {"Message ID: ", alert.messageId});
      printRow(columns, {"Level: ", severityName(alert.severity)});
      printRow(columns, {"Message: ", alert.message});
      printReport("");
    }
  }
  traceExiting("SystemHealth::showHealth");
}
