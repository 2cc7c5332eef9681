#include "suite/devhealth/inventory/printed_records.h"

#include <optional>
#include <string>

#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace records = Tarvex::DeviceHealth;

std::string healthText(report::Health health) {
  switch (health) {
    case report::Health::kNormal:
      return "OK";
    case report::Health::kWarning:
      return "Warning";
    case report::Health::kError:
      return "Critical";
    case report::Health::kUnknown:
      break;
  }
  return "Unknown";
}

std::string numberText(std::optional<double> number) {
  return number ? formatNumber(*number) : std::string();
}

// A quantity in the first unit that it is known in.
std::string firstQuantity(std::optional<double> number, std::string_view unit,
                          std::optional<double> other,
                          std::string_view otherUnit) {
  return number ? quantity(number, unit) : quantity(other, otherUnit);
}

}  // namespace

records::SystemBoard printed(const report::System& system) {
  return {system.name, system.typeModel, system.serialNumber, system.uuid};
}

records::Processor printed(const report::Processor& processor) {
  return {processor.name, processor.model, numberText(processor.speedMhz),
          numberText(processor.maxSpeedMhz), healthText(processor.health)};
}

records::Fan printed(const report::Fan& fan) {
  return {fan.name, firstQuantity(fan.speedRpm, "RPM", fan.speedPercent, "%"),
          healthText(fan.health)};
}

records::DIMM printed(const report::MemoryModule& module) {
  return {module.slot,
          module.partNumber,
          module.serialNumber,
          module.manufacturer,
          module.type,
          firstQuantity(module.maxSpeedMhz, "MHz", module.maxSpeedMts, "MT/s")};
}

records::Power printed(const report::PowerSupply& supply) {
  return {supply.name, quantity(supply.capacityWatts, "W"),
          healthText(supply.health)};
}

records::PCIAdapter printed(const report::PciAdapter& adapter) {
  return {adapter.name,
          adapter.tag,
          adapter.manufacturer,
          adapter.model,
          adapter.serialNumber,
          adapter.partNumber,
          adapter.sku,
          adapter.stateText.empty() ? "Unknown" : adapter.stateText,
          adapter.statusText};
}

}  // namespace devhealth
