#pragma once

#include <string_view>

namespace redfish {

// Members of resources, told by their names; letter case does not count, since
// makers write theirs in many ways.

/// Whether a member of this name identifies one machine or its users: serial
/// numbers, asset and service tags, UUIDs, addresses and names of devices on
/// networks, names of hosts and users.
bool isIdentifying(std::string_view name);

/// Whether a member of this name holds a password, a token or a key.
bool isSecret(std::string_view name);

/// Whether a member of this name holds words of the data format itself: types,
/// states, identifiers of messages.
bool isFormat(std::string_view name);

/// Whether a member of this name holds a version, which may look like an
/// address.
bool isVersion(std::string_view name);

}  // namespace redfish
