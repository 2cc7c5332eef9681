#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bmc {

/// A request's target, taken apart and decoded.
struct Target {
  std::string path;  ///< Without trailing slash, except "/" itself.
  std::vector<std::pair<std::string, std::string>> query;

  /// The value of a query parameter; nothing when it is not there.
  std::optional<std::string> parameter(std::string_view name) const;
};

/// Reads a target in origin form (RFC 9112). Nothing when it is not one, or
/// when it holds a ".." segment.
std::optional<Target> parseTarget(std::string_view text);

}  // namespace bmc
