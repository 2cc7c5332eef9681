#include "suite/connection/prefetch.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "suite/redfish/selection.h"

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

}  // namespace

std::uint32_t wantsOf(const std::string* device) {
  if (device == nullptr) {
    return redfish::kWantHealth;
  }
  std::uint32_t wants = 0;
  std::string_view rest = *device;
  while (true) {
    const std::size_t comma = std::min(rest.find(','), rest.size());
    for (const Item& item : kItems) {
      if (*device == "all" || rest.substr(0, comma) == item.name) {
        wants |= item.want;
      }
    }
    if (comma == rest.size()) {
      return wants;
    }
    rest.remove_prefix(comma + 1);
  }
}

}  // namespace connection
