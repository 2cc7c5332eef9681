#pragma once

#include <cstdint>
#include <string>

namespace bmc {

/// "127.0.0.1:80", "[::1]:80".
std::string hostAndPort(const std::string& address, std::uint16_t port);

/// Asks a controller's control port, such as for "/counters". The answer's
/// body; empty when there is none.
std::string askControl(const std::string& address, std::uint16_t port,
                       const std::string& target);

}  // namespace bmc
