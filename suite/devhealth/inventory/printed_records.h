#pragma once

#include <vector>

#include "suite/report/report.h"
#include "syshealth/inventory/components.h"

namespace devhealth {

// The records that the tables print, made from the typed report: numbers get
// their units, health the words "OK", "Warning", "Critical" and "Unknown".

Tarvex::DeviceHealth::SystemBoard printed(const report::System& system);
Tarvex::DeviceHealth::Processor printed(const report::Processor& processor);
Tarvex::DeviceHealth::Fan printed(const report::Fan& fan);
Tarvex::DeviceHealth::DIMM printed(const report::MemoryModule& module);
Tarvex::DeviceHealth::Power printed(const report::PowerSupply& supply);
Tarvex::DeviceHealth::PCIAdapter printed(const report::PciAdapter& adapter);

/// The same of a whole table.
template <typename Part>
auto printed(const std::vector<Part>& parts) {
  std::vector<decltype(printed(parts.front()))> records;
  records.reserve(parts.size());
  for (const Part& part : parts) {
    records.push_back(printed(part));
  }
  return records;
}

}  // namespace devhealth
