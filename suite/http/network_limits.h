#pragma once

#include <chrono>

namespace http {

/// What both transports over the network say of themselves.
const char* userAgent();

/// Longest wait of a transport in one go; it waits again when there is time
/// left.
constexpr std::chrono::milliseconds kMaxWait = std::chrono::minutes(1);

/// What the library in use may be late with a time limit before a request is
/// given up.
constexpr std::chrono::milliseconds kGrace{100};

}  // namespace http
