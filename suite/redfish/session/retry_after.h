#pragma once

#include <chrono>
#include <string_view>

namespace redfish {

/// How long to wait before a request is repeated, by the header Retry-After of
/// its answer (seconds or an HTTP date, RFC 9110): at least 1 s, at most 30 s.
/// Without the header, or with a useless one, 1 s for the first repeat and
/// twice as long for each further one. `attempt` counts repeats from 0.
std::chrono::milliseconds retryDelay(std::string_view retryAfter, int attempt,
                                     std::chrono::system_clock::time_point now);

}  // namespace redfish
