#pragma once

#include <string_view>

namespace redfish {

/// What the name of a member says of its value; letter case does not count,
/// since makers write their names in many ways.
struct PropertyRole {
  /// Identifies one machine or its users: serial numbers, asset and service
  /// tags, UUIDs, addresses and names of devices on networks, names of hosts
  /// and users.
  bool identifying = false;
  bool secret = false;   ///< A password, a token or a key.
  bool format = false;   ///< Words of the data format itself: types, states,
                         ///< identifiers of messages.
  bool version = false;  ///< A version, which may look like an address.
};

/// The role of members of a name.
PropertyRole roleOf(std::string_view name);

}  // namespace redfish
