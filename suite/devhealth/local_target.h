#pragma once

#include <string>
#include <vector>

#include "suite/devhealth/inventory.h"
#include "suite/local/machine.h"

namespace devhealth {

/// This machine itself, where no service reports it.
class LocalTarget : public Inventory {
 public:
  /// Borrows a machine. If it is null, every call fails.
  explicit LocalTarget(local::Machine* machine) : machine_(machine) {}

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

  /// There is nothing to connect to.
  std::optional<Unread> connect() override;

  /// A machine keeps no list of its active events: not supported.
  std::optional<Unread> events(std::vector<report::Event>& events) override;

  std::optional<std::size_t> memoryPlaces() override;

 private:
  /// Fails if the firmware's table cannot be read: most parts stand nowhere
  /// else.
  std::optional<Unread> requireTable();
  std::optional<Unread> requireMachine();

  local::Machine* machine_;
};

}  // namespace devhealth
