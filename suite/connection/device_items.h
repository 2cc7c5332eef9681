#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace connection {

/// What a run needs of a node, as `redfish::Want` values, so that it is read in
/// one go. `device` is the text of the option of that name ("all",
/// "fan,dimm"); null, if the option is not given, stands for the health
/// summary. Names that are no item are ignored.
std::uint32_t wantsOf(const std::string* device);

/// Whether a result code of a run with this text of the option "device" can
/// only be the OR of the codes of several items: more than one is asked for,
/// and none of them ends with that code by itself.
bool isCombined(std::int32_t code, const std::string& device);

/// The items, in the order of their tables.
std::vector<std::string_view> deviceItems();

/// What is wrong with the text of the option "device": the name in it that is
/// no item, and the items that there are. Empty if nothing is wrong.
std::string problemWithItems(const std::string& device);

}  // namespace connection
