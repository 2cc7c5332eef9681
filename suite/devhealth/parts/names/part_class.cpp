#include "suite/devhealth/parts/names/part_class.h"

#include <algorithm>
#include <array>

#include "suite/base/ascii.h"
#include "suite/devhealth/parts/odata_type.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Uri;

// Names that say no more than the heading of a table does, as real services
// use them.
constexpr std::array<std::string_view, 34> kClassWords = {
    "Processor",
    "Processors",
    "Computer Processor",
    "CPU",
    "GPU",
    "FPGA",
    "Accelerator",
    "Fan",
    "Memory",
    "DIMM",
    "DIMM Slot",
    "Memory Module",
    "Power Supply",
    "Power Supplies",
    "Power Supply Bay",
    "PSU",
    "PCIe Device",
    "PCIeDevice",
    "PCI Device",
    "Network Adapter",
    "NetworkAdapter",
    "Network Adapter View",
    "Network Controller",
    "Storage Controller",
    "Controller",
    "Storage",
    "Drive",
    "Disk",
    "Volume",
    "Battery",
    "Sensor",
    "System",
    "Chassis",
    "Manager"};

struct ClassRow {
  std::string_view type;    // Of "@odata.type".
  std::string_view folder;  // Array or collection that holds such parts.
  std::string_view word;
  std::string_view locator;
};

// clang-format off
constexpr std::array<ClassRow, 18> kClasses = {{
    {"Processor",         "Processors",         "Processor",          "Socket"},
    {"Memory",            "Memory",             "DIMM",               "DeviceLocator"},
    {"Fan",               "Fans",               "Fan",                "FanName"},
    {"PowerSupply",       "PowerSupplies",      "Power Supply",       ""},
    {"PCIeDevice",        "PCIeDevices",        "PCIe Device",        ""},
    {"NetworkAdapter",    "NetworkAdapters",    "Network Adapter",    ""},
    {"StorageController", "StorageControllers", "Storage Controller", ""},
    {"Storage",           "Storage",            "Storage",            ""},
    {"Drive",             "Drives",             "Drive",              ""},
    {"Volume",            "Volumes",            "Volume",             ""},
    {"Battery",           "Batteries",          "Battery",            ""},
    {"Temperature",       "Temperatures",       "Temperature",        ""},
    {"Voltage",           "Voltages",           "Voltage",            ""},
    {"Redundancy",        "Redundancy",         "Redundancy",         ""},
    {"PowerControl",      "PowerControl",       "Power Control",      ""},
    {"ComputerSystem",    "Systems",            "System",             ""},
    {"Chassis",           "Chassis",            "Chassis",            ""},
    {"Manager",           "Managers",           "Manager",            ""},
}};
// clang-format on

constexpr std::string_view kDeviceWord = "PCIe Device";
constexpr std::string_view kDriveWord = "Drive";

std::string squeezed(std::string_view text) {
  std::string letters;
  for (const char c : text) {
    if (c != ' ') {
      letters += base::lower(c);
    }
  }
  return letters;
}

bool holdsWord(std::string_view text, std::string_view word) {
  return squeezed(text).find(squeezed(word)) != std::string::npos;
}

bool isClassWord(std::string_view text) {
  constexpr std::string_view kSupply = "PowerSupply";
  if (text.size() >= kSupply.size() &&
      text.find(' ') == std::string_view::npos &&
      base::equalIgnoringCase(text.substr(text.size() - kSupply.size()),
                              kSupply)) {
    return true;
  }
  return std::any_of(kClassWords.begin(), kClassWords.end(),
                     [text](std::string_view word) {
                       return base::equalIgnoringCase(text, word);
                     });
}

bool isNumber(std::string_view text) {
  return !text.empty() &&
         text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string_view lastSegment(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

// The array or collection that a part's link names.
std::string_view folderOf(const Uri& uri) {
  const std::string_view path =
      uri.fragment().empty() ? uri.document() : uri.fragment();
  return lastSegment(redfish::parentOf(path));
}

bool isIn(std::string_view part, const Uri& uri) {
  return uri.document().find(part) != std::string::npos;
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() &&
         text.substr(text.size() - end.size()) == end;
}

}  // namespace

PartClass classOf(const Uri& uri, const json::object& part) {
  const std::string_view type = odataTypeOf(part).type;
  const std::string_view folder = folderOf(uri);
  for (const ClassRow& row : kClasses) {
    if (type == row.type || (type.empty() && folder == row.folder)) {
      return {std::string(row.word), row.locator};
    }
  }
  if (folder == "Devices") {
    // The disks of SimpleStorage, or a list of devices in a maker's format.
    return {std::string(isIn("/SimpleStorage", uri) ? kDriveWord : kDeviceWord),
            ""};
  }
  if (endsWith(folder, "Redundancy")) {
    return {"Redundancy", ""};
  }
  if (type.empty() && folder == "Controllers" && isIn("/Storage/", uri)) {
    return classOfType("StorageController");
  }
  return {std::string(type), ""};
}

PartClass classOfType(std::string_view type) {
  for (const ClassRow& row : kClasses) {
    if (type == row.type) {
      return {std::string(row.word), row.locator};
    }
  }
  return {std::string(type), ""};
}

bool hasLetter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    return base::isLetter(c) || static_cast<unsigned char>(c) >= 0x80;
  });
}

bool hasIdentity(const json::object& part) {
  return isName(textAt(part, "Name")) ||
         !firstTextAt(part, {"Model", "SerialNumber", "PartNumber"}).empty();
}

bool isName(std::string_view text) {
  return hasLetter(text) && !isClassWord(text);
}

bool startsWithClassWord(std::string_view id) {
  const std::string text = squeezed(id);
  return std::any_of(kClassWords.begin(), kClassWords.end(),
                     [&text](std::string_view word) {
                       return base::startsWith(text, squeezed(word));
                     });
}

std::string withClassWord(const PartClass& partClass, const std::string& name) {
  const std::string& word = partClass.word;
  if (word.empty() || holdsWord(name, word)) {
    return name;
  }
  constexpr std::array<std::string_view, 3> kDiskWords = {"disk", "SSD", "HDD"};
  const bool isDisk = std::any_of(
      kDiskWords.begin(), kDiskWords.end(),
      [&name](std::string_view other) { return holdsWord(name, other); });
  return word == kDriveWord && isDisk ? name : word + " " + name;
}

std::string placeText(const PartClass& partClass, std::string place) {
  if (isNumber(place) && !partClass.word.empty()) {
    return partClass.word + " " + place;
  }
  return place;
}

}  // namespace devhealth
