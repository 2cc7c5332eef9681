#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace report {

// What was read of one server, as plain values: numbers are numbers and their
// units stand in their names. An empty text, nullopt and the enumerator
// kUnknown stand for a value that is not known. A list that was not read is
// nullopt; one that was read and holds nothing is empty. Texts are clean: no
// control characters, valid UTF-8, at most 1024 bytes.

/// What can be read of a server; values are OR-ed.
enum Want : std::uint32_t {
  kWantSystem = 1U << 0,
  kWantProcessors = 1U << 1,
  kWantFans = 1U << 2,
  kWantMemory = 1U << 3,
  kWantPowerSupplies = 1U << 4,
  kWantPciAdapters = 1U << 5,
  kWantHealth = 1U << 6,
  kWantAll = (1U << 7) - 1
};

/// Health of a server, an area or a part, and severity of an event; ascending.
enum class Health { kUnknown, kNormal, kWarning, kError };

/// State of a part, as the Resource schema of DSP0268 has it.
enum class State {
  kUnknown,
  kEnabled,
  kDisabled,
  kStandbyOffline,
  kStandbySpare,
  kInTest,
  kStarting,
  kAbsent,
  kUnavailableOffline,
  kDeferring,
  kQuiesced,
  kUpdating,
  kQualified,
  kDegraded
};

enum class PowerState {
  kUnknown,
  kOn,
  kOff,
  kPoweringOn,
  kPoweringOff,
  kPaused
};

/// Where the data comes from.
enum class Source {
  kRedfish,  ///< A Redfish service, or a recorded one.
  kLocal     ///< The operating system of this machine.
};

/// How much of what was asked for has been read.
enum class ReadStatus { kComplete, kPartial, kFailed };

/// Areas that health is told of, in the order of the health summary.
enum class Category : std::size_t {
  kSystem,
  kProcessors,
  kCooling,
  kMemory,
  kPci,
  kPower,
  kDisks,
  kOther
};
inline constexpr std::size_t kCategories = 8;

/// Which server a report is about.
struct Target {
  std::string name;     ///< In the settings, else the address.
  std::string address;  ///< "HOST:PORT", "file:DIR" or "this server".
  Source via = Source::kRedfish;
  int node = 1;   ///< Number of the node in its service, from 1.
  int nodes = 1;  ///< How many nodes the service has.
};

/// Why something could not be read.
struct ReadFailure {
  std::string what;      ///< "dimm" and the like; empty: the whole target.
  std::string resource;  ///< Path of the resource; may be empty.
  int code = 0;          ///< Result code of the suite, never 0.
  std::string cause;     ///< For a person: what happened and what to do.
};

/// How the reading went.
struct Read {
  std::string time;    ///< When it ended: RFC 3339, UTC.
  double seconds = 0;  ///< How long it took.
  ReadStatus status = ReadStatus::kFailed;
  std::vector<ReadFailure> failures;  ///< Empty if and only if complete.
};

/// The server as a whole.
struct System {
  std::string name;       ///< Maker and model.
  std::string typeModel;  ///< Type or stock number.
  std::string serialNumber;
  std::string uuid;
  PowerState powerState = PowerState::kUnknown;
  std::string firmwareVersion;            ///< BIOS or UEFI.
  std::string controllerFirmwareVersion;  ///< Management controller.
};

/// An active event.
struct Event {
  Category category = Category::kSystem;
  Health severity = Health::kUnknown;  ///< kWarning or kError.
  std::string messageId;
  std::string message;
  std::string origin;  ///< Path of the resource that it comes from.
  std::string time;    ///< As the service states it.
};

/// Health as the active events tell it.
struct HealthSummary {
  Health status = Health::kUnknown;  ///< The worst category; see below.
  /// By Category. All kUnknown when the events were not read.
  std::array<Health, kCategories> categories{};
  std::optional<std::vector<Event>> events;  ///< In the order of the summary.
};

// In each list, `id` tells a part from all others and stays the same from one
// reading to the next: the path of its resource, or what the operating system
// calls it. Lists are in the order of the printed tables.

/// A central processor.
struct Processor {
  std::string id;
  std::string name;
  std::string model;  ///< Brand text, else family.
  std::optional<std::int64_t> cores;
  std::optional<std::int64_t> threads;
  std::optional<double> speedMhz;
  std::optional<double> maxSpeedMhz;
  Health health = Health::kUnknown;
  State state = State::kUnknown;
};

/// A memory module.
struct MemoryModule {
  std::string id;
  std::string slot;
  std::optional<std::int64_t> capacityMib;
  std::string type;  ///< "DDR5".
  /// What services state as MHz, whichever of clock and transfers they mean.
  std::optional<double> maxSpeedMhz;
  std::optional<double> maxSpeedMts;  ///< Million transfers per second.
  std::string manufacturer;
  std::string partNumber;
  std::string serialNumber;
  Health health = Health::kUnknown;
  State state = State::kUnknown;
};

/// Places for memory modules that the server tells of.
struct MemorySlots {
  std::optional<std::int64_t> total;
  std::optional<std::int64_t> populated;
};

struct Fan {
  std::string id;
  std::string name;
  std::optional<double> speedRpm;
  std::optional<double> speedPercent;
  Health health = Health::kUnknown;
  State state = State::kUnknown;
};

struct PowerSupply {
  std::string id;
  std::string name;
  std::optional<double> capacityWatts;  ///< Rated output.
  std::string manufacturer;
  std::string model;
  std::string partNumber;
  std::string serialNumber;
  Health health = Health::kUnknown;
  State state = State::kUnknown;
};

struct PciAdapter {
  std::string id;
  std::string name;
  std::string tag;   ///< Short identifier, as printed; may not be unique.
  std::string slot;  ///< Label of its slot.
  std::string manufacturer;
  std::string model;
  std::string serialNumber;
  std::string partNumber;
  std::string sku;
  Health health = Health::kUnknown;
  State state = State::kUnknown;
  // For people, in the words of the service; not part of the JSON form.
  std::string stateText;   ///< State, also one that is no `State`.
  std::string statusText;  ///< Health and messages of active conditions.
};

/// One node of one target.
struct ServerReport {
  Target target;
  Read read;
  System system;
  HealthSummary health;
  std::optional<std::vector<Processor>> processors;
  std::optional<std::vector<MemoryModule>> memory;
  MemorySlots memorySlots;
  std::optional<std::vector<Fan>> fans;
  std::optional<std::vector<PowerSupply>> powerSupplies;
  std::optional<std::vector<PciAdapter>> pciAdapters;
};

}  // namespace report
