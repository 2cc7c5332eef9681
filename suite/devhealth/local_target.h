#pragma once

#include <vector>

#include "suite/devhealth/inventory.h"
#include "suite/local/machine.h"
#include "syshealth/host/connection_info.h"

namespace devhealth {

/// The machine itself, where no service stands for it.
class LocalTarget : public Inventory {
 public:
  /// Whether a connection is the one to the machine itself.
  static bool is(const Tarvex::TarvexConnection::ConnectionInfo& connection);

  /// Borrows the machine of the run. Without one every call fails.
  LocalTarget();

  int system(Tarvex::DeviceHealth::SystemBoard& system) override;
  int processors(
      std::vector<Tarvex::DeviceHealth::Processor>& processors) override;
  int fans(std::vector<Tarvex::DeviceHealth::Fan>& fans) override;
  int dimms(std::vector<Tarvex::DeviceHealth::DIMM>& dimms) override;
  int powers(std::vector<Tarvex::DeviceHealth::Power>& powers) override;
  int pciAdapters(
      std::vector<Tarvex::DeviceHealth::PCIAdapter>& adapters) override;

  /// There is nothing to connect to.
  int connect() override;

  /// A machine keeps no list of its active events: not supported.
  int health(std::vector<Tarvex::DeviceHealth::Alert>& alerts) override;

 private:
  /// Whether the firmware's table can be read, in which most parts stand
  /// alone. A status.
  int requireTable();
  int requireMachine();

  local::Machine* machine_;
};

}  // namespace devhealth
