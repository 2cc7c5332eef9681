#pragma once

#include <vector>

#include "syshealth/health/alert.h"
#include "syshealth/inventory/components.h"

namespace devhealth {

/// What one target tells of itself. The calls answer a status like those of
/// `DevHealth`; the arguments are empty before a call and hold the data after
/// one that answers 0. Every failure is logged and becomes the run's last
/// failure.
class Inventory {
 public:
  virtual ~Inventory() = default;

  virtual int connect() = 0;
  virtual int system(Tarvex::DeviceHealth::SystemBoard& system) = 0;
  virtual int processors(
      std::vector<Tarvex::DeviceHealth::Processor>& processors) = 0;
  virtual int fans(std::vector<Tarvex::DeviceHealth::Fan>& fans) = 0;
  virtual int dimms(std::vector<Tarvex::DeviceHealth::DIMM>& dimms) = 0;
  virtual int powers(std::vector<Tarvex::DeviceHealth::Power>& powers) = 0;
  virtual int pciAdapters(
      std::vector<Tarvex::DeviceHealth::PCIAdapter>& adapters) = 0;

  /// The active events.
  virtual int health(std::vector<Tarvex::DeviceHealth::Alert>& alerts) = 0;
};

}  // namespace devhealth
