#pragma once

#include <sys/socket.h>

#include <string>

namespace local {

/// Whether an address is one of the hosts at the other end of a network
/// device: it lies in the network of one of the device's own addresses, and is
/// no address of this machine. Loopback is its own other end.
bool isNeighbour(const sockaddr& address, const std::string& device);

}  // namespace local
