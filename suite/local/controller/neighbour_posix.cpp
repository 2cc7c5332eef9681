#include "suite/local/controller/neighbour_posix.h"

#include <net/if.h>
#include <netinet/in.h>

#include <cstddef>
#include <string_view>

#include "suite/local/controller/interface_addresses_posix.h"

namespace local {
namespace {

// The bytes of an IP address; empty for any other.
std::string_view bytesOf(const sockaddr* address) {
  if (address != nullptr && address->sa_family == AF_INET) {
    const auto* const ipv4 = reinterpret_cast<const sockaddr_in*>(address);
    return {reinterpret_cast<const char*>(&ipv4->sin_addr),
            sizeof ipv4->sin_addr};
  }
  if (address != nullptr && address->sa_family == AF_INET6) {
    const auto* const ipv6 = reinterpret_cast<const sockaddr_in6*>(address);
    return {reinterpret_cast<const char*>(&ipv6->sin6_addr),
            sizeof ipv6->sin6_addr};
  }
  return {};
}

// Whether two addresses of one family agree where the mask has ones.
bool inOneNetwork(std::string_view a, std::string_view b,
                  std::string_view mask) {
  bool same = a.size() == b.size() && a.size() == mask.size();
  for (std::size_t i = 0; same && i < mask.size(); ++i) {
    same = ((a[i] ^ b[i]) & mask[i]) == 0;
  }
  return same;
}

}  // namespace

bool isNeighbour(const sockaddr& address, const std::string& device) {
  const std::string_view wanted = bytesOf(&address);
  if (wanted.empty()) {
    return false;
  }
  const InterfaceAddresses list = interfaceAddresses();
  bool near = false;
  for (const ifaddrs* entry = list.get(); entry != nullptr;
       entry = entry->ifa_next) {
    const std::string_view own = bytesOf(entry->ifa_addr);
    const bool loopback = (entry->ifa_flags & IFF_LOOPBACK) != 0;
    if (own == wanted && !loopback) {
      return false;
    }
    if (device != entry->ifa_name || own.size() != wanted.size()) {
      continue;
    }
    const bool pointToPoint = (entry->ifa_flags & IFF_POINTOPOINT) != 0;
    near = near || inOneNetwork(own, wanted, bytesOf(entry->ifa_netmask)) ||
           (pointToPoint && bytesOf(entry->ifa_dstaddr) == wanted);
  }
  return near;
}

}  // namespace local
