#include <boost/format.hpp>
#include <iomanip>

#include "syshealth/app/system_health.h"
#include "syshealth/host/console_line.h"
#include "syshealth/host/report_table.h"
#include "syshealth/host/trace.h"
#include "syshealth/inventory/labels.h"

using Tarvex::DeviceHealth::DIMM;
using Tarvex::DeviceHealth::Fan;
using Tarvex::DeviceHealth::PCIAdapter;
using Tarvex::DeviceHealth::Power;
using Tarvex::DeviceHealth::Processor;
using Tarvex::DeviceHealth::SystemBoard;

namespace {

// The column format of one table. Columns are right-aligned in the widths
// given, first column first; the last column has none.
boost::format columnFormat(const char* pattern,
                           std::initializer_list<int> widths) {
  boost::format columns(pattern);
  int item = 1;
  for (const int width : widths) {
    columns.modify_item(item, std::setw(width));
    ++item;
  }
  return columns;
}

void printHeading(const char* heading) {
  printReport("");
  printReport(heading);
}

}  // namespace

void SystemHealth::showSystem(const SystemBoard& system) {
  traceEntering("SystemHealth::showSystem");
  printHeading("System Board:");
  boost::format columns = columnFormat("%1% %2% %3% %4% ", {30, 20, 20});
  printRow(columns, {kSystemBoardLabels[0], kSystemBoardLabels[1],
                     kSystemBoardLabels[2], kSystemBoardLabels[3]});
  printRow(columns, {system.machineName, system.machineTypeModel,
                     system.serialNumber, system.uuid});
  traceExiting("SystemHealth::showSystem");
}

void SystemHealth::showProcessors(const std::vector<Processor>& processors) {
  traceEntering("SystemHealth::showProcessors");
  printHeading("CPU:");
  boost::format columns = columnFormat("%1% %2% %3% %4% %5%", {15, 40, 25, 25});
  printRow(columns,
           {kProcessorLabels[0], kProcessorLabels[1], kProcessorLabels[2],
            kProcessorLabels[3], kProcessorLabels[4]});
  for (const Processor& processor : processors) {
    printRow(columns,
             {processor.name, processor.family, processor.currentClockSpeed,
              processor.maxClockSpeed, processor.healthState});
  }
  traceExiting("SystemHealth::showProcessors");
}

void SystemHealth::showFans(const std::vector<Fan>& fans) {
  traceEntering("SystemHealth::showFans");
  printHeading("Fan:");
  boost::format columns = columnFormat("%1% %2% %3%", {25, 25});
  printRow(columns, {kFanLabels[0], kFanLabels[1], kFanLabels[2]});
  for (const Fan& fan : fans) {
    printRow(columns, {fan.elementName, fan.desiredSpeed, fan.healthState});
  }
  traceExiting("SystemHealth::showFans");
}

void SystemHealth::showDIMMs(const std::vector<DIMM>& dimms) {
  traceEntering("SystemHealth::showDIMMs");
  printHeading("DIMM:");
  boost::format identity = columnFormat("%1% %2% %3% %4% ", {25, 25, 25});
  printRow(identity,
           {kDimmLabels[0], kDimmLabels[1], kDimmLabels[2], kDimmLabels[3]});
  for (const DIMM& dimm : dimms) {
    printRow(identity, {dimm.description, dimm.partNumber, dimm.serialNumber,
                        dimm.manufacturer});
  }
  printReport("");
  boost::format capability = columnFormat("%1% %2% ", {25});
  printRow(capability, {kDimmLabels[4], kDimmLabels[5]});
  for (const DIMM& dimm : dimms) {
    printRow(capability, {dimm.model, dimm.maxMemorySpeed});
  }
  traceExiting("SystemHealth::showDIMMs");
}

void SystemHealth::showPowers(const std::vector<Power>& powers) {
  traceEntering("SystemHealth::showPowers");
  printHeading("Power:");
  boost::format columns = columnFormat("%1% %2% %3%", {25, 25});
  printRow(columns, {kPowerLabels[0], kPowerLabels[1], kPowerLabels[2]});
  for (const Power& power : powers) {
    printRow(columns,
             {power.elementName, power.totalOutputPower, power.healthState});
  }
  traceExiting("SystemHealth::showPowers");
}

void SystemHealth::showPCIAdapters(const std::vector<PCIAdapter>& adapters) {
  traceEntering("SystemHealth::showPCIAdapters");
  printHeading("PCI Adapter:");
  boost::format names = columnFormat("%1% %2% ", {50});
  printRow(names, {kPciAdapterLabels[0], kPciAdapterLabels[1]});
  for (const PCIAdapter& adapter : adapters) {
    printRow(names, {adapter.description, adapter.tag});
  }
  printReport("");
  boost::format details =
      columnFormat("%1% %2% %3% %4% %5% %6% ", {15, 15, 15, 15, 15});
  printRow(details,
           {kPciAdapterLabels[2], kPciAdapterLabels[3], kPciAdapterLabels[4],
            kPciAdapterLabels[5], kPciAdapterLabels[6], kPciAdapterLabels[7]});
  for (const PCIAdapter& adapter : adapters) {
    printRow(details,
             {adapter.manufacturer, adapter.model, adapter.serialNumber,
              adapter.partNumber, adapter.sku, adapter.operationalStatus});
  }
  traceExiting("SystemHealth::showPCIAdapters");
}
