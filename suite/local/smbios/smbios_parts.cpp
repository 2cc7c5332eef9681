#include "suite/local/smbios/smbios_parts.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "suite/base/filler.h"
#include "suite/base/text.h"
#include "suite/local/facts/machine_names.h"
#include "suite/local/smbios/smbios_names.h"
#include "suite/local/smbios/smbios_system.h"

namespace local {
namespace {

constexpr std::uint8_t kOtherProcessor = 1;
constexpr std::uint8_t kCentralProcessor = 3;
constexpr unsigned kSocketPopulated = 0x40;
constexpr std::uint8_t kFamilyInSecondField = 0xFE;
constexpr std::uint16_t kUseExtendedSpeed = 0xFFFF;
constexpr std::uint16_t kUnknownCapacity = 0x8000;
constexpr unsigned kPowerSupplyPresent = 0x02;
constexpr unsigned kPowerSupplyUnplugged = 0x04;
constexpr std::uint8_t kSystemMemory = 3;
constexpr std::uint8_t kSlotInUse = 4;
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
    case 4:
      return ProcessorState::kIdle;
    default:
      return ProcessorState::kUnknown;
  }
}

// The populated sockets of a type of processor.
std::vector<const SmbiosStructure*> socketsOf(const SmbiosTables& tables,
                                              std::uint8_t processorType) {
  std::vector<const SmbiosStructure*> sockets;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosProcessor)) {
    const unsigned status = structure->formatted.byte(0x18).value_or(0);
    if (structure->formatted.byte(0x05) == processorType &&
        (status & kSocketPopulated) != 0) {
      sockets.push_back(structure);
    }
  }
  return sockets;
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

// A count that stands in a byte, or in a word of its own where it does not fit
// into one.
std::optional<unsigned> countAt(base::ByteView formatted, std::size_t offset,
                                std::size_t wordOffset) {
  constexpr std::uint8_t kInTheWord = 0xFF;
  const auto count = formatted.byte(offset);
  return count == kInTheWord ? known(formatted.word(wordOffset)) : known(count);
}

std::optional<unsigned> moduleMib(base::ByteView formatted) {
  constexpr std::uint16_t kUnknownSize = 0xFFFF;
  constexpr std::uint16_t kInExtendedSize = 0x7FFF;
  constexpr unsigned kInKibibytes = 0x8000;
  constexpr unsigned kKibibytes = 1024;
  const unsigned size = formatted.word(0x0C).value_or(kUnknownSize);
  if (size == kUnknownSize) {
    return std::nullopt;
  }
  if (size == kInExtendedSize) {
    // Bit 31 is reserved.
    return known(
        std::optional(formatted.dword(0x1C).value_or(0) & 0x7FFFFFFFU));
  }
  const bool small = (size & kInKibibytes) != 0;
  return known(
      std::optional(small ? (size & ~kInKibibytes) / kKibibytes : size));
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

// The PCI address whose segment stands at an offset, the bus and the device
// and function numbers behind it; nullopt where the structure states none.
std::optional<PciAddress> addressAt(base::ByteView formatted,
                                    std::size_t offset) {
  const auto segment = formatted.word(offset);
  const auto bus = formatted.byte(offset + 2);
  const auto place = formatted.byte(offset + 3);
  if (!segment || !bus || !place || *segment == kNoSegment ||
      (*bus == kNoBus && *place == kNoPlace)) {
    return std::nullopt;
  }
  return PciAddress{*segment, *bus, static_cast<std::uint8_t>(*place >> 3U),
                    static_cast<std::uint8_t>(*place & 0x07U)};
}

// Handles of the memory arrays that hold something else than the system's
// memory.
std::set<std::uint16_t> otherArrays(const SmbiosTables& tables) {
  std::set<std::uint16_t> handles;
  for (const SmbiosStructure* array : tables.ofType(kSmbiosMemoryArray)) {
    if (array->formatted.byte(0x05).value_or(kSystemMemory) != kSystemMemory) {
      handles.insert(array->handle);
    }
  }
  return handles;
}

// Whether a memory device (type 17) belongs to one of these arrays.
bool isIn(const std::set<std::uint16_t>& arrays,
          const SmbiosStructure& device) {
  const auto array = device.formatted.word(0x04);
  return array && arrays.count(*array) != 0;
}

// The rated output; nullopt when it is not stated.
std::optional<unsigned> capacityOf(const SmbiosStructure& supply) {
  const auto capacity = supply.formatted.word(0x0C);
  return capacity == kUnknownCapacity ? std::nullopt : known(capacity);
}

bool hasValue(std::string_view text) {
  const std::string clean = base::cleanText(text);
  return !clean.empty() && !base::isFiller(clean);
}

// Whether firmware left the structure of a supply as its maker's template.
bool isTemplate(const SmbiosStructure& supply) {
  constexpr std::size_t kTexts[] = {0x05, 0x06, 0x07, 0x0A};
  return !capacityOf(supply) &&
         std::none_of(std::begin(kTexts), std::end(kTexts),
                      [&](std::size_t offset) {
                        return hasValue(supply.string(offset));
                      });
}

}  // namespace

std::vector<ProcessorFacts> processorFacts(const SmbiosTables& tables) {
  std::vector<const SmbiosStructure*> sockets =
      socketsOf(tables, kCentralProcessor);
  if (sockets.empty()) {
    sockets = socketsOf(tables, kOtherProcessor);
  }
  const MachineNames machine(systemFacts(tables), boardFacts(tables));
  std::vector<ProcessorFacts> processors;
  for (const SmbiosStructure* structure : sockets) {
    const base::ByteView formatted = structure->formatted;
    ProcessorFacts facts;
    facts.socket = structure->string(0x04);
    facts.version = structure->string(0x10);
    if (machine.contain(facts.version)) {
      facts.version.clear();
    }
    facts.family = familyOf(formatted);
    facts.maxMhz = known(formatted.word(0x14));
    facts.currentMhz = known(formatted.word(0x16));
    facts.cores = countAt(formatted, 0x23, 0x2A);
    facts.threads = countAt(formatted, 0x25, 0x2E);
    facts.state = processorState(formatted.byte(0x18).value_or(0));
    processors.push_back(std::move(facts));
  }
  return processors;
}

std::vector<MemoryFacts> memoryFacts(const SmbiosTables& tables) {
  const std::set<std::uint16_t> others = otherArrays(tables);
  std::vector<MemoryFacts> modules;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosMemoryDevice)) {
    const base::ByteView formatted = structure->formatted;
    const auto size = formatted.word(0x0C);
    if (!size || *size == 0 || isIn(others, *structure)) {
      continue;
    }
    MemoryFacts facts;
    facts.locator = structure->string(0x10);
    facts.bank = structure->string(0x11);
    facts.type = memoryTypeName(formatted.byte(0x12).value_or(0));
    facts.maxSpeed = moduleSpeed(formatted);
    facts.capacityMib = moduleMib(formatted);
    facts.manufacturer = structure->string(0x17);
    facts.serial = structure->string(0x18);
    facts.partNumber = structure->string(0x1A);
    modules.push_back(std::move(facts));
  }
  return modules;
}

std::optional<std::size_t> memoryPlaces(const SmbiosTables& tables) {
  const std::set<std::uint16_t> others = otherArrays(tables);
  std::size_t stated = 0;
  for (const SmbiosStructure* array : tables.ofType(kSmbiosMemoryArray)) {
    if (others.count(array->handle) == 0) {
      stated += array->formatted.word(0x0D).value_or(0);
    }
  }
  const auto devices = tables.ofType(kSmbiosMemoryDevice);
  const auto listed = static_cast<std::size_t>(std::count_if(
      devices.begin(), devices.end(),
      [&](const SmbiosStructure* device) { return !isIn(others, *device); }));
  const std::size_t places = std::max(stated, listed);
  return places == 0 ? std::nullopt : std::optional(places);
}

std::vector<SupplyFacts> supplyFacts(const SmbiosTables& tables) {
  std::vector<SupplyFacts> supplies;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosPowerSupply)) {
    const unsigned characteristics =
        structure->formatted.word(0x0E).value_or(0);
    if ((characteristics & kPowerSupplyPresent) == 0 ||
        isTemplate(*structure)) {
      continue;
    }
    SupplyFacts facts;
    facts.location = structure->string(0x05);
    facts.name = structure->string(0x06);
    facts.capacityWatts = capacityOf(*structure);
    facts.state = supplyState(characteristics);
    facts.unplugged = (characteristics & kPowerSupplyUnplugged) != 0;
    supplies.push_back(std::move(facts));
  }
  return supplies;
}

std::vector<SlotFacts> slotFacts(const SmbiosTables& tables) {
  struct Slot {
    std::string_view designation;
    std::size_t stated = 0;  // Structures with this address.
    std::size_t inUse = 0;
  };
  std::map<PciAddress, Slot> slots;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosSlot)) {
    const auto address = addressAt(structure->formatted, 0x0D);
    if (!address) {
      continue;
    }
    Slot& slot = slots[*address];
    const bool inUse = structure->formatted.byte(0x07) == kSlotInUse;
    if (slot.stated == 0 || inUse) {
      slot.designation = structure->string(0x04);
    }
    ++slot.stated;
    slot.inUse += inUse ? 1 : 0;
  }
  std::vector<SlotFacts> found;
  for (const auto& [address, slot] : slots) {
    const bool certain = slot.stated == 1 || slot.inUse == 1;
    if (certain && !slot.designation.empty()) {
      found.push_back({std::string(slot.designation), address});
    }
  }
  return found;
}

std::vector<SlotFacts> onboardFacts(const SmbiosTables& tables) {
  std::vector<SlotFacts> found;
  for (const SmbiosStructure* structure : tables.ofType(kSmbiosOnboardDevice)) {
    if (const auto address = addressAt(structure->formatted, 0x07)) {
      found.push_back({std::string(structure->string(0x04)), *address});
    }
  }
  return found;
}

}  // namespace local
