#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace redfish {

/// The target of a redirect, an absolute URI or a path, as path and query.
/// Returns nullopt if it leaves the origin (`address`: "host:port") or its path
/// breaks the rules for links.
std::optional<std::string> redirectTarget(std::string_view location,
                                          std::string_view address);

}  // namespace redfish
