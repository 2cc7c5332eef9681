#pragma once

#include <ifaddrs.h>

#include <memory>

namespace local {

/// Gives a list of getifaddrs(3) back.
struct FreeInterfaceAddresses {
  void operator()(ifaddrs* list) const { freeifaddrs(list); }
};

using InterfaceAddresses = std::unique_ptr<ifaddrs, FreeInterfaceAddresses>;

/// The addresses of the network interfaces of this machine; null if the system
/// does not tell.
inline InterfaceAddresses interfaceAddresses() {
  ifaddrs* list = nullptr;
  return InterfaceAddresses(getifaddrs(&list) == 0 ? list : nullptr);
}

}  // namespace local
