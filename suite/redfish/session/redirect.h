#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace redfish {

/// Where a redirect leads, as path and query on the same origin; nothing when
/// it leaves the origin (`address`: "host:port") or its path breaks the rules
/// for links. Takes an absolute URI or a path.
std::optional<std::string> redirectTarget(std::string_view location,
                                          std::string_view address);

}  // namespace redfish
