#pragma once

#include <string>

namespace Tarvex::DeviceHealth {

// The hardware component records. Every field is a text that the
// device-health client has made ready for printing; an empty text means that
// the value is not known. The label of a field's column, and the property of
// the management data that it carries, stand in labels.h in the same order.

/// The system board of one target.
struct SystemBoard {
  std::string machineName;
  std::string machineTypeModel;
  std::string serialNumber;
  std::string uuid;
};

/// A processor.
struct Processor {
  std::string name;
  std::string family;
  std::string currentClockSpeed;  ///< MHz.
  std::string maxClockSpeed;      ///< MHz.
  std::string healthState;
};

/// A fan.
struct Fan {
  std::string elementName;
  std::string desiredSpeed;  ///< With its unit.
  std::string healthState;
};

/// A memory module.
struct DIMM {
  std::string description;
  std::string partNumber;
  std::string serialNumber;
  std::string manufacturer;
  std::string model;           ///< Memory type.
  std::string maxMemorySpeed;  ///< With its unit.
};

/// A power supply.
struct Power {
  std::string elementName;
  std::string totalOutputPower;  ///< Rated output, with its unit.
  std::string healthState;
};

/// A PCI adapter.
struct PCIAdapter {
  std::string description;
  std::string tag;
  std::string manufacturer;
  std::string model;
  std::string serialNumber;
  std::string partNumber;
  std::string sku;
  std::string operationalStatus;
  std::string statusDescriptions;  ///< Carried, never printed.
};

}  // namespace Tarvex::DeviceHealth
