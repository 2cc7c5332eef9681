#include "suite/local/smbios/smbios_parts.h"

#include <cstddef>
#include <utility>

#include "suite/local/smbios/smbios_names.h"

namespace local {
namespace {

constexpr std::uint8_t kCentralProcessor = 3;
constexpr std::uint8_t kFamilyInSecondField = 0xFE;
constexpr std::uint16_t kUseExtendedSpeed = 0xFFFF;
constexpr std::uint16_t kUnknownCapacity = 0x8000;
constexpr std::uint8_t kPowerSupplyPresent = 0x02;
// Slots and devices that are not on a PCI bus state these.
constexpr std::uint16_t kNoSegment = 0xFFFF;
constexpr std::uint8_t kNoBus = 0xFF;
constexpr std::uint8_t kNoPlace = 0xFF;

// Speeds and capacities of 0 are not known.
template <typename Number>
std::optional<unsigned> known(std::optional<Number> value) {
  if (!value || *value == 0) {
    return std::nullopt;
  }
  return static_cast<unsigned>(*value);
}

ProcessorState processorState(unsigned status) {
  switch (status & 0x07U) {
    case 1:
      return ProcessorState::kEnabled;
    case 2:
      return ProcessorState::kDisabledByUser;
    case 3:
      return ProcessorState::kFailed;
    default:
      return ProcessorState::kUnknown;
  }
}

std::string_view familyOf(base::ByteView formatted) {
  const std::uint8_t family = formatted.byte(0x06).value_or(0);
  if (family != kFamilyInSecondField) {
    return processorFamilyName(family);
  }
  return processorFamilyName(formatted.word(0x28).value_or(0));
}

std::optional<unsigned> moduleSpeed(base::ByteView formatted) {
  const auto speed = formatted.word(0x15);
  if (speed != kUseExtendedSpeed) {
    return known(speed);
  }
  const auto extended = formatted.dword(0x54);
  if (!extended) {
    return std::nullopt;
  }
  return known(std::optional(*extended & 0x7FFFFFFFU));  // Bit 31: reserved.
}

SupplyState supplyState(unsigned characteristics) {
  switch (characteristics >> 7U & 0x07U) {
    case 3:
      return SupplyState::kOk;
    case 4:
      return SupplyState::kNonCritical;
    case 5:
      return SupplyState::kCritical;
    default:
      return SupplyState::kUnknown;
  }
}

// Places of a type whose segment stands at `segmentAt`, the bus and the
// device and function numbers behind it.
std::vector<SlotFacts> places(const SmbiosTables& tables, SmbiosType type,
                              std::size_t segmentAt) {
  std::vector<SlotFacts> found;
  for (const SmbiosStructure* structure : tables.ofType(type)) {
    const auto segment = structure->formatted.word(segmentAt);
    const auto bus = structure->formatted.byte(segmentAt + 2);
    const auto place = structure->formatted.byte(segmentAt + 3);
    if (!segment || !bus || !place) {
      continue;
    }
    if (*segment == kNoSegment || (*bus == kNoBus && *place == kNoPlace)) {
      continue;
    }
    SlotFacts facts;
    facts.designation = structure->string(0x04);
    facts.address = {*segment, *bus, static_cast<std::uint8_t>(*place >> 3U),
                     static_cast<std::uint8_t>(*place & 0x07U)};
    if (!facts.designation.empty()) {
      found.push_back(std::move(facts));
    }
  }
  return found;
}

}  // namespace

std::vector<ProcessorFacts> processorFacts(const SmbiosTables& tables) {
  std::vector<ProcessorFacts> processors;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosProcessor)) {
    const base::ByteView formatted = structure->formatted;
    const unsigned status = formatted.byte(0x18).value_or(0);
    const bool populated = (status & 0x40U) != 0;
    if (formatted.byte(0x05) != kCentralProcessor || !populated) {
      continue;
    }
    ProcessorFacts facts;
    facts.socket = structure->string(0x04);
    facts.version = structure->string(0x10);
    facts.family = familyOf(formatted);
    facts.maxMhz = known(formatted.word(0x14));
    facts.currentMhz = known(formatted.word(0x16));
    facts.state = processorState(status);
    processors.push_back(std::move(facts));
  }
  return processors;
}

std::vector<MemoryFacts> memoryFacts(const SmbiosTables& tables) {
  std::vector<MemoryFacts> modules;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosMemoryDevice)) {
    const base::ByteView formatted = structure->formatted;
    const auto size = formatted.word(0x0C);
    if (!size || *size == 0) {
      continue;
    }
    MemoryFacts facts;
    facts.locator = structure->string(0x10);
    facts.bank = structure->string(0x11);
    facts.type = memoryTypeName(formatted.byte(0x12).value_or(0));
    facts.maxSpeed = moduleSpeed(formatted);
    facts.manufacturer = structure->string(0x17);
    facts.serial = structure->string(0x18);
    facts.partNumber = structure->string(0x1A);
    modules.push_back(std::move(facts));
  }
  return modules;
}

std::vector<SupplyFacts> supplyFacts(const SmbiosTables& tables) {
  std::vector<SupplyFacts> supplies;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosPowerSupply)) {
    const unsigned characteristics =
        structure->formatted.word(0x0E).value_or(0);
    if ((characteristics & kPowerSupplyPresent) == 0) {
      continue;
    }
    SupplyFacts facts;
    facts.location = structure->string(0x05);
    facts.name = structure->string(0x06);
    const auto capacity = structure->formatted.word(0x0C);
    if (capacity != kUnknownCapacity) {
      facts.capacityWatts = known(capacity);
    }
    facts.state = supplyState(characteristics);
    supplies.push_back(std::move(facts));
  }
  return supplies;
}

std::vector<SlotFacts> slotFacts(const SmbiosTables& tables) {
  return places(tables, kSmbiosSlot, 0x0D);
}

std::vector<SlotFacts> onboardFacts(const SmbiosTables& tables) {
  return places(tables, kSmbiosOnboardDevice, 0x07);
}

}  // namespace local
