#pragma once

#include <vector>

#include "suite/local/machine.h"
#include "syshealth/host/connection_info.h"
#include "syshealth/inventory/components.h"

namespace devhealth {

/// The machine itself as a target, where no service stands for it. Its calls
/// answer like those of `DevHealth`; every failure becomes a status, a line in
/// the log, and the run's last failure.
class LocalTarget {
 public:
  /// Whether a connection is the one to the machine itself.
  static bool is(const Tarvex::TarvexConnection::ConnectionInfo& connection);

  /// Borrows the machine of the run. Without one every call fails.
  LocalTarget();

  int system(Tarvex::DeviceHealth::SystemBoard& system);
  int processors(std::vector<Tarvex::DeviceHealth::Processor>& processors);
  int fans(std::vector<Tarvex::DeviceHealth::Fan>& fans);
  int dimms(std::vector<Tarvex::DeviceHealth::DIMM>& dimms);
  int powers(std::vector<Tarvex::DeviceHealth::Power>& powers);
  int pciAdapters(std::vector<Tarvex::DeviceHealth::PCIAdapter>& adapters);

  /// A machine keeps no list of its active events: not supported.
  int health();

 private:
  /// Whether the firmware's table can be read, in which most parts stand
  /// alone. A status.
  int requireTable();
  int requireMachine();

  local::Machine* machine_;
};

}  // namespace devhealth
