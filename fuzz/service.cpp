// A whole service: a controller that answers by the input is crawled, and all
// that it tells is mapped to records and alerts, which have to be what the
// module relies on.
#include "suite/redfish/service.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/answers.h"
#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/base/text.h"
#include "suite/run/run.h"
#include "syshealth/health/dev_health.h"

namespace {

// Texts that reach the console are clean: cleaning them changes nothing.
template <typename... Text>
void checkTexts(const Text&... texts) {
  (require(base::cleanText(texts) == texts), ...);
}

void checkAlerts(const std::vector<Tarvex::DeviceHealth::Alert>& alerts) {
  static const std::set<std::string> kCategories = {
      "System", "Processors", "Cooling", "Memory",
      "PCI",    "Power",      "Disks",   "Other"};
  for (const auto& alert : alerts) {
    require(alert.severity >= 0 && alert.severity <= 2);
    require(kCategories.count(alert.category) == 1);
    checkTexts(alert.messageId, alert.message, alert.extra);
  }
}

// Reads a node in every way that the module does.
void readNode(std::uint16_t nodeIndex) {
  using namespace Tarvex::DeviceHealth;
  Tarvex::TarvexConnection::ConnectionInfo connection;
  connection.nodeIndex = nodeIndex;
  DevHealth client(connection);
  SystemBoard board;
  std::vector<Processor> processors;
  std::vector<Fan> fans;
  std::vector<DIMM> dimms;
  std::vector<Power> powers;
  std::vector<PCIAdapter> adapters;
  std::vector<Alert> alerts;
  if (client.get_system(board) == 0) {
    checkTexts(board.machineName, board.machineTypeModel, board.serialNumber,
               board.uuid);
  }
  if (client.get_processors(processors) == 0) {
    for (const Processor& row : processors) {
      checkTexts(row.name, row.family, row.currentClockSpeed, row.maxClockSpeed,
                 row.healthState);
    }
  }
  if (client.get_fans(fans) == 0) {
    for (const Fan& row : fans) {
      checkTexts(row.elementName, row.desiredSpeed, row.healthState);
    }
  }
  if (client.get_DIMMs(dimms) == 0) {
    for (const DIMM& row : dimms) {
      checkTexts(row.description, row.partNumber, row.serialNumber,
                 row.manufacturer, row.model, row.maxMemorySpeed);
    }
  }
  if (client.get_Powers(powers) == 0) {
    for (const Power& row : powers) {
      checkTexts(row.elementName, row.totalOutputPower, row.healthState);
    }
  }
  if (client.get_PCIApaters(adapters) == 0) {
    for (const PCIAdapter& row : adapters) {
      checkTexts(row.description, row.tag, row.manufacturer, row.model,
                 row.serialNumber, row.partNumber, row.sku,
                 row.operationalStatus, row.statusDescriptions);
    }
  }
  if (client.connect() == 0 && client.getHealthSum(alerts) == 0) {
    checkAlerts(alerts);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  // Two nodes are read in seven ways each, and each looks at all links.
  const StepBudget budget(20000, 400, size);
  redfish::ServiceOptions options;
  options.user = "u";
  options.password = base::Secret("pass-word");
  run::Run run;
  run.pool().add(std::make_unique<redfish::Service>(
      options, std::make_unique<AnsweringTransport>(input)));
  readNode(0);
  readNode(1);
  return 0;
}
