#pragma once

#include <utility>
#include <vector>

#include "suite/devhealth/inventory.h"
#include "suite/devhealth/target_reader.h"

namespace devhealth {

/// One node of a Redfish service: each call reads what it needs and was not
/// read before in the run.
class RedfishInventory : public Inventory {
 public:
  explicit RedfishInventory(TargetReader reader) : reader_(std::move(reader)) {}

  std::optional<Unread> connect() override;
  std::optional<Unread> system(report::System& system) override;
  std::optional<Unread> processors(
      std::vector<report::Processor>& processors) override;
  std::optional<Unread> fans(std::vector<report::Fan>& fans) override;
  std::optional<Unread> memory(
      std::vector<report::MemoryModule>& modules) override;
  std::optional<Unread> powerSupplies(
      std::vector<report::PowerSupply>& supplies) override;
  std::optional<Unread> pciAdapters(
      std::vector<report::PciAdapter>& adapters) override;
  std::optional<Unread> events(std::vector<report::Event>& events) override;
  std::optional<std::size_t> memoryPlaces() override;

 private:
  TargetReader reader_;
};

}  // namespace devhealth
