#include "suite/devhealth/parts/display_name.h"

#include <algorithm>
#include <array>

#include "suite/base/ascii.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

// Names that say no more than the heading of the table does.
constexpr std::array<std::string_view, 6> kClassWords = {
    "Processor", "CPU", "Fan", "Power Supply", "Memory", "Network Adapter"};

bool isClassWord(std::string_view name) {
  return std::any_of(kClassWords.begin(), kClassWords.end(),
                     [name](std::string_view word) {
                       return base::equalIgnoringCase(name, word);
                     });
}

}  // namespace

void NameCounts::add(const redfish::json::object& part) {
  std::string name = textAt(part, "Name");
  if (!name.empty()) {
    ++counts_[std::move(name)];
  }
}

bool NameCounts::unique(const std::string& name) const {
  const auto found = counts_.find(name);
  return found == counts_.end() || found->second == 1;
}

std::string displayName(const redfish::json::object& part,
                        const redfish::Uri& uri, const NameCounts& siblings,
                        std::string_view locator) {
  std::string name = textAt(part, "Name");
  if (!name.empty() && siblings.unique(name) && !isClassWord(name)) {
    return name;
  }
  std::string place = textAt(part, "Location/PartLocation/ServiceLabel");
  if (place.empty() && !locator.empty()) {
    place = textAt(part, locator);
  }
  if (!place.empty()) {
    return place;
  }
  const std::string id = firstTextAt(part, {"Id", "MemberId"});
  if (!id.empty()) {
    return name.empty() ? id : name + " " + id;
  }
  return recordText(uri.lastSegment());
}

}  // namespace devhealth
