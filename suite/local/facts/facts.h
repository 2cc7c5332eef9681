#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace local {

// What this machine says of its own parts, in plain values. Texts are as the
// firmware or the kernel wrote them, blanks, placeholders and control
// characters included: who prints them cleans them first. An empty text or a
// missing number is a value that is not known.

/// Where a PCI function sits.
struct PciAddress {
  std::uint32_t segment = 0;
  std::uint8_t bus = 0;
  std::uint8_t device = 0;
  std::uint8_t function = 0;

  bool operator==(const PciAddress& other) const {
    return segment == other.segment && bus == other.bus &&
           device == other.device && function == other.function;
  }

  /// By segment, bus, device and function.
  bool operator<(const PciAddress& other) const {
    return std::tie(segment, bus, device, function) <
           std::tie(other.segment, other.bus, other.device, other.function);
  }
};

/// The machine as a whole.
struct SystemFacts {
  std::string manufacturer;
  std::string product;
  std::string version;
  std::string serial;
  std::string sku;
  std::string family;
  std::string uuid;  ///< 8-4-4-4-12 hexadecimal digits, lower case.
};

/// A board of the machine.
struct BoardFacts {
  std::string manufacturer;
  std::string product;
  std::string version;
  std::string serial;
};

/// What the firmware found of a processor when the machine started.
enum class ProcessorState {
  kUnknown,
  kEnabled,
  kDisabledByUser,
  kFailed,
  kIdle  ///< Waiting to be enabled.
};

/// A populated processor socket.
struct ProcessorFacts {
  std::string socket;
  std::string version;  ///< The brand text; empty: only the machine's name.
  std::string family;   ///< Name of the family's number; empty: not listed.
  std::optional<unsigned> currentMhz;
  std::optional<unsigned> maxMhz;  ///< Limit of the socket.
  std::optional<unsigned> cores;
  std::optional<unsigned> threads;
  ProcessorState state = ProcessorState::kUnknown;
};

/// A memory module.
struct MemoryFacts {
  std::string locator;
  std::string bank;
  std::string partNumber;
  std::string serial;
  std::string manufacturer;
  std::string type;                  ///< "DDR5"; empty: unknown or not listed.
  std::optional<unsigned> maxSpeed;  ///< MT/s.
  std::optional<unsigned> capacityMib;
};

/// What the firmware says of a power supply.
enum class SupplyState { kUnknown, kOk, kNonCritical, kCritical };

/// A power supply that is present.
struct SupplyFacts {
  std::string location;
  std::string name;
  std::optional<unsigned> capacityWatts;
  SupplyState state = SupplyState::kUnknown;
  bool unplugged = false;  ///< From its source of power.
};

/// A slot, or the place of an on-board device, with what names it.
struct SlotFacts {
  std::string designation;  ///< May be empty for an on-board device.
  PciAddress address;
};

/// What a fan's chip says of it.
enum class FanState { kOk, kAlarm, kFault };

/// A fan.
struct FanFacts {
  std::string chip;
  std::string input;  ///< "fan1".
  std::string label;
  std::optional<long> targetRpm;
  std::optional<long> measuredRpm;
  FanState state = FanState::kOk;
};

/// A PCI function that is an adapter.
struct PciFacts {
  PciAddress address;
  std::uint16_t vendorId = 0;
  std::uint16_t deviceId = 0;
  std::string manufacturer;  ///< Names from pci.ids.
  std::string model;
  std::string slot;  ///< Designation of its slot or on-board place.
  std::string serial;
  std::string partNumber;
  bool driverBound = false;
};

}  // namespace local
