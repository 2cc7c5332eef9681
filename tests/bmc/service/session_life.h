#pragma once

#include <cstdint>
#include <limits>

namespace bmc {

/// How long sessions live.
struct SessionLife {
  std::uint64_t expireAfter = 0;  ///< Requests with its token; 0: for ever.
  /// How many sessions end so; those after them live for ever.
  std::uint64_t times = std::numeric_limits<std::uint64_t>::max();
};

}  // namespace bmc
