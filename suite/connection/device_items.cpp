#include "suite/connection/device_items.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "suite/redfish/crawl/selection.h"
#include "syshealth/result/result_codes.h"

namespace connection {
namespace {

struct Item {
  std::string_view name;
  std::uint32_t want;
};

// clang-format off
constexpr Item kItems[] = {
    {"system",      redfish::kWantSystem},
    {"processor",   redfish::kWantProcessors},
    {"fan",         redfish::kWantFans},
    {"dimm",        redfish::kWantDimms},
    {"power",       redfish::kWantPowers},
    {"pci_adapter", redfish::kWantPciAdapters},
};
// clang-format on

constexpr std::string_view kAll = "all";

// The names in a list with commas between, empty ones included.
std::vector<std::string_view> namesIn(std::string_view list) {
  std::vector<std::string_view> names;
  while (true) {
    const std::size_t comma = std::min(list.find(','), list.size());
    names.push_back(list.substr(0, comma));
    if (comma == list.size()) {
      return names;
    }
    list.remove_prefix(comma + 1);
  }
}

// The item of a name; null when there is none.
const Item* itemOf(std::string_view name) {
  const Item* const found =
      std::find_if(std::begin(kItems), std::end(kItems),
                   [&](const Item& item) { return item.name == name; });
  return found == std::end(kItems) ? nullptr : found;
}

}  // namespace

std::uint32_t wantsOf(const std::string* device) {
  if (device == nullptr) {
    return redfish::kWantHealth;
  }
  std::uint32_t wants = 0;
  if (*device == kAll) {
    for (const Item& item : kItems) {
      wants |= item.want;
    }
  }
  for (const std::string_view name : namesIn(*device)) {
    const Item* const item = itemOf(name);
    wants |= item == nullptr ? 0 : item->want;
  }
  return wants;
}

bool isCombined(std::int32_t code, const std::string& device) {
  // What an item ends with: the results of the statuses of its call, and that
  // of a node which does not exist.
  const std::int32_t kOfOneItem[] = {
      kResultGenericFailure, kResultReadFileFailed, kResultConnectionFailed,
      kResultInternalError, kResultNotSupported};
  return (device == kAll || namesIn(device).size() > 1) &&
         std::find(std::begin(kOfOneItem), std::end(kOfOneItem), code) ==
             std::end(kOfOneItem);
}

std::vector<std::string_view> deviceItems() {
  std::vector<std::string_view> names;
  for (const Item& item : kItems) {
    names.push_back(item.name);
  }
  return names;
}

std::string problemWithItems(const std::string& device) {
  if (device == kAll) {
    return "";
  }
  for (const std::string_view name : namesIn(device)) {
    if (itemOf(name) == nullptr) {
      std::string known;
      for (const Item& item : kItems) {
        known += std::string(item.name) + ", ";
      }
      return "'" + std::string(name) + "' is no item; items are " + known +
             "or all alone";
    }
  }
  return "";
}

}  // namespace connection
