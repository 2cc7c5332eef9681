#include "check/finding.h"

#include <cstddef>

namespace check {
namespace {

constexpr std::string_view kNames[report::kCategories] = {
    "System", "Processors", "Cooling", "Memory",
    "PCI",    "Power",      "Disks",   "Other"};

}  // namespace

std::string_view nameOf(report::Category category) {
  return kNames[static_cast<std::size_t>(category)];
}

}  // namespace check
