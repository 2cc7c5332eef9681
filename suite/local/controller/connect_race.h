#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace local {

/// Where a service listens.
struct Endpoint {
  std::string address;  ///< IPv4, or IPv6 with its zone where it needs one.
  std::uint16_t port = 0;
};

/// Connects to all endpoints at once over TCP and returns the index of the
/// first that accepts, the lowest of several that accept at the same time.
/// Every connection is closed again; nothing is sent. An endpoint whose
/// address is a host name is not tried. Returns nullopt if none accepts within
/// `limit`, or the user interrupts the run.
std::optional<std::size_t> firstToAccept(const std::vector<Endpoint>& endpoints,
                                         std::chrono::milliseconds limit);

}  // namespace local
