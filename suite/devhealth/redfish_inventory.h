#pragma once

#include <vector>

#include "suite/devhealth/inventory.h"
#include "suite/devhealth/target_reader.h"

namespace devhealth {

/// One node of a Redfish service: each call reads what it needs and was not
/// read before in the run.
class RedfishInventory : public Inventory {
 public:
  explicit RedfishInventory(
      const Tarvex::TarvexConnection::ConnectionInfo& connection)
      : reader_(connection) {}

  int connect() override;
  int system(Tarvex::DeviceHealth::SystemBoard& system) override;
  int processors(
      std::vector<Tarvex::DeviceHealth::Processor>& processors) override;
  int fans(std::vector<Tarvex::DeviceHealth::Fan>& fans) override;
  int dimms(std::vector<Tarvex::DeviceHealth::DIMM>& dimms) override;
  int powers(std::vector<Tarvex::DeviceHealth::Power>& powers) override;
  int pciAdapters(
      std::vector<Tarvex::DeviceHealth::PCIAdapter>& adapters) override;
  int health(std::vector<Tarvex::DeviceHealth::Alert>& alerts) override;

 private:
  TargetReader reader_;
};

}  // namespace devhealth
