#pragma once

#include <string>

#include "suite/devhealth/parts/names/display_name.h"
#include "suite/devhealth/parts/part_list.h"

namespace devhealth {

/// As what a part of the PCI table is listed.
enum class PciKind {
  kDevice,      ///< A PCIeDevice.
  kListed,      ///< A member of a maker's own list of devices.
  kAdapter,     ///< A NetworkAdapter.
  kProcessor,   ///< A processor that is no CPU.
  kController,  ///< A storage controller.
};

/// A device, or a part that may be one of the devices.
struct PciPart {
  PciKind kind = PciKind::kDevice;
  Part part;
  /// The storage that a controller is part of; null for other kinds.
  const redfish::json::object* storage = nullptr;
  bool onlyController = false;  ///< Its storage has no other controller.
};

/// What a part says of itself, in the words of the table. Empty texts for one
/// that cannot be read.
struct PciFields {
  std::string manufacturer;
  std::string model;
  std::string serialNumber;
  std::string partNumber;
  std::string sku;
};

PciFields fieldsOf(const PciPart& part);

/// The class that a part is called after in the table: an accelerator by its
/// `ProcessorType`.
PartClass pciClassOf(const PciPart& part);

/// The identifier of a part in the table. A controller without an `Id` has that
/// of its storage, with its own number if the storage has several.
std::string pciTagOf(const PciPart& part);

}  // namespace devhealth
