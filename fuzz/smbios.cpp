// Firmware tables: the first byte is the length of the entry point, which
// follows; the rest is the table. Everything is read from it, and mapped to
// the report.
#include "suite/local/smbios/smbios.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/devhealth/inventory/local_inventory.h"
#include "suite/local/controller/controller_path.h"
#include "suite/local/smbios/host_interface.h"
#include "suite/local/smbios/smbios_parts.h"
#include "suite/local/smbios/smbios_system.h"

namespace {

void checkText(std::string_view text) {
  require(std::none_of(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
  }));
}

void checkReport(const local::SmbiosTables& tables) {
  const auto system =
      devhealth::systemOf(systemFacts(tables), boardFacts(tables));
  checkText(system.name);
  checkText(system.typeModel);
  checkText(system.serialNumber);
  require(system.uuid.empty() || system.uuid.size() == 36);
  for (const auto& part : devhealth::processorsOf(processorFacts(tables))) {
    checkText(part.name);
    checkText(part.model);
  }
  for (const auto& part : devhealth::dimmsOf(memoryFacts(tables))) {
    checkText(part.slot);
    checkText(part.serialNumber);
  }
  for (const auto& part : devhealth::powersOf(supplyFacts(tables))) {
    checkText(part.name);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const StepBudget budget(5000, 50, size);
  if (size == 0) {
    return 0;
  }
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string_view entry = bytes.substr(1, data[0]);
  const std::string_view table = bytes.substr(1 + entry.size());
  const local::SmbiosTables tables = parseSmbios(
      local::parseSmbiosEntry(base::ByteView(entry)), base::ByteView(table));
  std::size_t formatted = 0;
  for (const local::SmbiosStructure& structure : tables.structures) {
    require(structure.formatted.size() >= 4);
    formatted += structure.formatted.size();
  }
  require(formatted <= table.size());
  checkReport(tables);
  slotFacts(tables);
  onboardFacts(tables);
  for (const auto& ways : controllerWays(hostInterfaces(tables), {})) {
    require(!ways.empty());
    for (const local::ControllerPath& path : ways) {
      require(path.address.empty());
      require(!problemText(path).empty());
    }
  }
  return 0;
}
