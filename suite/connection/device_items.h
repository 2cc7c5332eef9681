#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace connection {

/// What a run will ask a node for, as `redfish::Want` values, so that one
/// reading can bring it all: `device` is the text of the option of that name
/// ("all", "fan,dimm"), null when the option is not given, which asks for the
/// health summary. Names that are no item count for nothing.
std::uint32_t wantsOf(const std::string* device);

/// Whether a result code of a run with this text of the option "device" can
/// only be the OR of the codes of several items: more than one is asked for,
/// and none of them ends with that code by itself.
bool isCombined(std::int32_t code, const std::string& device);

/// The items, in the order of their tables.
std::vector<std::string_view> deviceItems();

/// What is wrong with the text of the option "device": which name in it is no
/// item, and which items there are. Empty when nothing is.
std::string problemWithItems(const std::string& device);

}  // namespace connection
