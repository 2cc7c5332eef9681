#include "suite/devhealth/health/alert_category.h"

#include <array>
#include <optional>

#include "suite/base/ascii.h"
#include "suite/base/time_limit.h"
#include "suite/devhealth/parts/odata_type.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

using redfish::Graph;
using redfish::Uri;
using Category = AlertCategory;

struct Row {
  std::string_view name;
  Category category;
};

// clang-format off
// Names of path segments (DSP0268 resource and collection names), and of the
// parts of a system that stand for all of a kind.
constexpr Row kSegments[] = {
    {"Processors",          Category::kProcessors},
    {"ProcessorSummary",    Category::kProcessors},
    {"Memory",              Category::kMemory},
    {"MemoryDomains",       Category::kMemory},
    {"MemorySummary",       Category::kMemory},
    {"ThermalSubsystem",    Category::kCooling},
    {"Thermal",             Category::kCooling},
    {"Fans",                Category::kCooling},
    {"Pumps",               Category::kCooling},
    {"Heaters",             Category::kCooling},
    {"LeakDetectors",       Category::kCooling},
    {"CoolingLoops",        Category::kCooling},
    {"PowerSubsystem",      Category::kPower},
    {"Power",               Category::kPower},
    {"PowerSupplies",       Category::kPower},
    {"Batteries",           Category::kPower},
    {"Outlets",             Category::kPower},
    {"PCIeDevices",         Category::kPci},
    {"PCIeSlots",           Category::kPci},
    {"Devices",             Category::kPci},
    {"NetworkAdapters",     Category::kPci},
    {"NetworkInterfaces",   Category::kPci},
    {"EthernetInterfaces",  Category::kPci},
    {"FabricAdapters",      Category::kPci},
    {"GraphicsControllers", Category::kPci},
    {"USBControllers",      Category::kPci},
    {"Storage",             Category::kDisks},
    {"SimpleStorage",       Category::kDisks},
    {"Drives",              Category::kDisks},
    {"Volumes",             Category::kDisks},
    {"StorageControllers",  Category::kDisks},
    {"MediaControllers",    Category::kDisks},
    {"Sensors",             Category::kSystem},
    {"EnvironmentMetrics",  Category::kSystem},
};

// Names of types whose area does not depend on where they stand.
constexpr Row kTypes[] = {
    {"Processor",           Category::kProcessors},
    {"ProcessorMetrics",    Category::kProcessors},
    {"OperatingConfig",     Category::kProcessors},
    {"Memory",              Category::kMemory},
    {"MemoryMetrics",       Category::kMemory},
    {"MemoryDomain",        Category::kMemory},
    {"ThermalSubsystem",    Category::kCooling},
    {"Thermal",             Category::kCooling},
    {"ThermalMetrics",      Category::kCooling},
    {"Fan",                 Category::kCooling},
    {"Pump",                Category::kCooling},
    {"Heater",              Category::kCooling},
    {"LeakDetection",       Category::kCooling},
    {"LeakDetector",        Category::kCooling},
    {"CoolingLoop",         Category::kCooling},
    {"PowerSubsystem",      Category::kPower},
    {"Power",               Category::kPower},
    {"PowerSupply",         Category::kPower},
    {"PowerSupplyMetrics",  Category::kPower},
    {"Battery",             Category::kPower},
    {"BatteryMetrics",      Category::kPower},
    {"Circuit",             Category::kPower},
    {"Outlet",              Category::kPower},
    {"PCIeDevice",          Category::kPci},
    {"PCIeFunction",        Category::kPci},
    {"PCIeSlots",           Category::kPci},
    {"NetworkAdapter",      Category::kPci},
    {"NetworkInterface",    Category::kPci},
    {"NetworkDeviceFunction", Category::kPci},
    {"EthernetInterface",   Category::kPci},
    {"FabricAdapter",       Category::kPci},
    {"GraphicsController",  Category::kPci},
    {"USBController",       Category::kPci},
    {"Storage",             Category::kDisks},
    {"SimpleStorage",       Category::kDisks},
    {"Drive",               Category::kDisks},
    {"Volume",              Category::kDisks},
    {"StorageController",   Category::kDisks},
    {"MediaController",     Category::kDisks},
    {"ComputerSystem",      Category::kSystem},
    {"Chassis",             Category::kSystem},
    {"Manager",             Category::kSystem},
};

// What a sensor measures: its ReadingType, of which a row names the start.
constexpr Row kReadingTypes[] = {
    {"Temperature",         Category::kCooling},
    {"Humidity",            Category::kCooling},
    {"AirFlow",             Category::kCooling},
    {"Rotational",          Category::kCooling},
    {"Liquid",              Category::kCooling},
    {"Heat",                Category::kCooling},
    {"Voltage",             Category::kPower},
    {"Current",             Category::kPower},
    {"Power",               Category::kPower},
    {"Energy",              Category::kPower},
    {"Charge",              Category::kPower},
    {"Frequency",           Category::kPower},
};

// Its unit (UCUM), where it does not tell its ReadingType.
constexpr Row kReadingUnits[] = {
    {"Cel",                 Category::kCooling},
    {"RPM",                 Category::kCooling},
    {"%",                   Category::kCooling},
    {"W",                   Category::kPower},
    {"V",                   Category::kPower},
    {"A",                   Category::kPower},
    {"Hz",                  Category::kPower},
    {"kW.h",                Category::kPower},
};

constexpr std::array<std::string_view, 8> kNames = {
    "System", "Processors", "Cooling", "Memory",
    "PCI",    "Power",      "Disks",   "Other"};
// clang-format on

template <std::size_t Size>
std::optional<Category> find(const Row (&rows)[Size], std::string_view name) {
  for (const Row& row : rows) {
    if (row.name == name) {
      return row.category;
    }
  }
  return std::nullopt;
}

Category sensorCategory(const redfish::json::object& sensor) {
  const std::string_view type = redfish::stringAt(sensor, "ReadingType");
  if (type.empty()) {
    return find(kReadingUnits, redfish::stringAt(sensor, "ReadingUnits"))
        .value_or(Category::kSystem);
  }
  for (const Row& row : kReadingTypes) {
    if (base::startsWith(type, row.name)) {
      return row.category;
    }
  }
  return Category::kSystem;
}

std::optional<Category> categoryOfType(const redfish::json::object& resource) {
  const OdataType type = odataTypeOf(resource);
  if (type.type == "Sensor") {
    return sensorCategory(resource);
  }
  const auto category = find(kTypes, type.type);
  return category ? category : find(kTypes, type.schema);
}

// The path below the instance of /redfish/v1/{Systems|Chassis|Managers}/{id},
// without query, followed by the fragment; nothing for other roots.
std::optional<std::string> pathInInstance(const Uri& origin) {
  const std::string_view document = origin.document();
  const std::string_view root = redfish::segmentOf(document, 2);
  if (root != "Systems" && root != "Chassis" && root != "Managers") {
    return std::nullopt;
  }
  const std::string_view id = redfish::segmentOf(document, 3);
  std::string_view rest =
      id.empty() ? std::string_view()
                 : document.substr(
                       static_cast<std::size_t>(id.data() - document.data()) +
                       id.size());
  rest = rest.substr(0, rest.find('?'));
  return std::string(rest) + origin.fragment();
}

struct SegmentMatch {
  Category category = Category::kSystem;
  bool sensor = false;
};

// The first segment of a path that belongs to an area.
SegmentMatch firstMatch(std::string_view path) {
  while (!path.empty() && path.front() == '/') {
    base::heedTime();
    path.remove_prefix(1);
    const std::string_view segment = path.substr(0, path.find('/'));
    if (segment.empty()) {
      break;
    }
    if (const auto category = find(kSegments, segment)) {
      return {*category, segment == "Sensors"};
    }
    path.remove_prefix(segment.size());
  }
  return {};
}

}  // namespace

std::string_view categoryName(AlertCategory category) {
  return kNames[static_cast<std::size_t>(category)];
}

AlertCategory categoryOf(const Graph& graph, const Uri& origin) {
  if (const auto* resource = graph.resolve(origin).object) {
    if (const auto category = categoryOfType(*resource)) {
      return *category;
    }
  }
  const auto path = pathInInstance(origin);
  return path ? firstMatch(*path).category : Category::kOther;
}

bool isUnreadSensor(const Graph& graph, const Uri& origin) {
  if (graph.find(origin.document()) != nullptr) {
    return false;
  }
  const auto path = pathInInstance(origin);
  return path && firstMatch(*path).sensor;
}

}  // namespace devhealth
