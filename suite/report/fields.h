#pragma once

#include <string_view>
#include <tuple>

#include "suite/report/report.h"

namespace report {

// The fields of the report's structures under the names that they have in
// JSON, CSV and elsewhere, in the order in which they are written.

template <typename Owner, typename Type>
struct Field {
  std::string_view name;
  Type Owner::*member;
};

template <typename Owner, typename Type>
constexpr Field<Owner, Type> field(std::string_view name, Type Owner::*member) {
  return {name, member};
}

/// The fields of a structure: a tuple `kList` of `Field`.
template <typename Structure>
struct Fields;

template <>
struct Fields<Target> {
  static constexpr auto kList = std::make_tuple(
      field("name", &Target::name), field("address", &Target::address),
      field("via", &Target::via), field("node", &Target::node),
      field("nodes", &Target::nodes));
};

template <>
struct Fields<ReadFailure> {
  static constexpr auto kList = std::make_tuple(
      field("what", &ReadFailure::what),
      field("resource", &ReadFailure::resource),
      field("code", &ReadFailure::code), field("cause", &ReadFailure::cause));
};

template <>
struct Fields<Read> {
  static constexpr auto kList = std::make_tuple(
      field("time", &Read::time), field("seconds", &Read::seconds),
      field("status", &Read::status), field("failures", &Read::failures));
};

template <>
struct Fields<System> {
  static constexpr auto kList = std::make_tuple(
      field("name", &System::name), field("type_model", &System::typeModel),
      field("serial_number", &System::serialNumber),
      field("uuid", &System::uuid), field("power_state", &System::powerState),
      field("firmware_version", &System::firmwareVersion),
      field("controller_firmware_version", &System::controllerFirmwareVersion));
};

template <>
struct Fields<Event> {
  static constexpr auto kList = std::make_tuple(
      field("category", &Event::category), field("severity", &Event::severity),
      field("message_id", &Event::messageId), field("message", &Event::message),
      field("origin", &Event::origin), field("time", &Event::time));
};

template <>
struct Fields<HealthSummary> {
  static constexpr auto kList =
      std::make_tuple(field("status", &HealthSummary::status),
                      field("categories", &HealthSummary::categories),
                      field("events", &HealthSummary::events));
};

template <>
struct Fields<Processor> {
  static constexpr auto kList = std::make_tuple(
      field("id", &Processor::id), field("name", &Processor::name),
      field("model", &Processor::model), field("cores", &Processor::cores),
      field("threads", &Processor::threads),
      field("speed_mhz", &Processor::speedMhz),
      field("max_speed_mhz", &Processor::maxSpeedMhz),
      field("health", &Processor::health), field("state", &Processor::state));
};

template <>
struct Fields<MemoryModule> {
  static constexpr auto kList = std::make_tuple(
      field("id", &MemoryModule::id), field("slot", &MemoryModule::slot),
      field("capacity_mib", &MemoryModule::capacityMib),
      field("type", &MemoryModule::type),
      field("max_speed_mhz", &MemoryModule::maxSpeedMhz),
      field("max_speed_mts", &MemoryModule::maxSpeedMts),
      field("manufacturer", &MemoryModule::manufacturer),
      field("part_number", &MemoryModule::partNumber),
      field("serial_number", &MemoryModule::serialNumber),
      field("health", &MemoryModule::health),
      field("state", &MemoryModule::state));
};

template <>
struct Fields<MemorySlots> {
  static constexpr auto kList =
      std::make_tuple(field("total", &MemorySlots::total),
                      field("populated", &MemorySlots::populated));
};

template <>
struct Fields<Fan> {
  static constexpr auto kList = std::make_tuple(
      field("id", &Fan::id), field("name", &Fan::name),
      field("speed_rpm", &Fan::speedRpm),
      field("speed_percent", &Fan::speedPercent), field("health", &Fan::health),
      field("state", &Fan::state));
};

template <>
struct Fields<PowerSupply> {
  static constexpr auto kList = std::make_tuple(
      field("id", &PowerSupply::id), field("name", &PowerSupply::name),
      field("capacity_watts", &PowerSupply::capacityWatts),
      field("manufacturer", &PowerSupply::manufacturer),
      field("model", &PowerSupply::model),
      field("part_number", &PowerSupply::partNumber),
      field("serial_number", &PowerSupply::serialNumber),
      field("health", &PowerSupply::health),
      field("state", &PowerSupply::state));
};

template <>
struct Fields<PciAdapter> {
  static constexpr auto kList = std::make_tuple(
      field("id", &PciAdapter::id), field("name", &PciAdapter::name),
      field("tag", &PciAdapter::tag), field("slot", &PciAdapter::slot),
      field("manufacturer", &PciAdapter::manufacturer),
      field("model", &PciAdapter::model),
      field("serial_number", &PciAdapter::serialNumber),
      field("part_number", &PciAdapter::partNumber),
      field("sku", &PciAdapter::sku), field("health", &PciAdapter::health),
      field("state", &PciAdapter::state));
};

template <>
struct Fields<ServerReport> {
  static constexpr auto kList =
      std::make_tuple(field("target", &ServerReport::target),
                      field("read", &ServerReport::read),
                      field("system", &ServerReport::system),
                      field("health", &ServerReport::health),
                      field("processors", &ServerReport::processors),
                      field("memory", &ServerReport::memory),
                      field("memory_slots", &ServerReport::memorySlots),
                      field("fans", &ServerReport::fans),
                      field("power_supplies", &ServerReport::powerSupplies),
                      field("pci_adapters", &ServerReport::pciAdapters));
};

/// Calls `visit(name, value)` for each field of a structure, in order.
template <typename Structure, typename Visit>
void forEachField(Structure&& structure, Visit&& visit) {
  std::apply(
      [&](const auto&... fields) {
        (visit(fields.name, structure.*fields.member), ...);
      },
      Fields<std::decay_t<Structure>>::kList);
}

}  // namespace report
