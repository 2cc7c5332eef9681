#include "check/parts.h"

#include <utility>

namespace check {
namespace {

template <typename Source>
Part basicPart(const Source& source, std::string place) {
  Part part;
  part.id = source.id;
  part.place = std::move(place);
  part.present = source.state != report::State::kAbsent;
  return part;
}

template <typename Source>
void identify(const Source& source, Part& part) {
  part.serial = source.serialNumber;
  part.model = source.partNumber;
}

std::optional<double> number(const std::optional<std::int64_t>& value) {
  return value ? std::optional<double>(static_cast<double>(*value))
               : std::nullopt;
}

Part partOf(const report::Processor& source) {
  Part part = basicPart(source, source.name);
  part.model = source.model;
  part.size = number(source.cores);
  return part;
}

Part partOf(const report::MemoryModule& source) {
  Part part = basicPart(source, source.slot);
  identify(source, part);
  part.size = number(source.capacityMib);
  return part;
}

Part partOf(const report::Fan& source) {
  return basicPart(source, source.name);
}

Part partOf(const report::PowerSupply& source) {
  Part part = basicPart(source, source.name);
  identify(source, part);
  if (part.model.empty()) {
    part.model = source.model;
  }
  part.size = source.capacityWatts;
  return part;
}

Part partOf(const report::PciAdapter& source) {
  Part part =
      basicPart(source, source.slot.empty() ? source.name : source.slot);
  identify(source, part);
  if (part.model.empty()) {
    part.model = source.model;
  }
  return part;
}

template <typename Source>
PartList listOf(const char* kind, const char* unit, report::Category category,
                const std::optional<std::vector<Source>>& sources) {
  PartList list = {kind, unit, category, std::nullopt};
  if (sources) {
    list.parts.emplace();
    for (const Source& source : *sources) {
      list.parts->push_back(partOf(source));
    }
  }
  return list;
}

}  // namespace

std::vector<PartList> partsOf(const report::ServerReport& report) {
  using report::Category;
  std::vector<PartList> lists;
  lists.push_back(
      listOf("processor", "cores", Category::kProcessors, report.processors));
  lists.push_back(
      listOf("memory module", "MiB", Category::kMemory, report.memory));
  lists.push_back(listOf("fan", "", Category::kCooling, report.fans));
  lists.push_back(
      listOf("power supply", "W", Category::kPower, report.powerSupplies));
  lists.push_back(
      listOf("PCI adapter", "", Category::kPci, report.pciAdapters));
  return lists;
}

}  // namespace check
