#include "suite/local/controller/network.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <string>

#include "suite/local/controller/interface_addresses_posix.h"

namespace local {
namespace {

std::string addressText(const sockaddr* address) {
  char text[INET6_ADDRSTRLEN] = {};
  const void* bytes = nullptr;
  if (address->sa_family == AF_INET) {
    bytes = &reinterpret_cast<const sockaddr_in*>(address)->sin_addr;
  } else if (address->sa_family == AF_INET6) {
    bytes = &reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr;
  }
  if (bytes == nullptr ||
      inet_ntop(address->sa_family, bytes, text, sizeof text) == nullptr) {
    return "";
  }
  return text;
}

void addFamily(const ifaddrs* list, int family,
               std::vector<NetworkDevice>& devices) {
  for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
    if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != family) {
      continue;
    }
    const std::string text = addressText(entry->ifa_addr);
    for (NetworkDevice& device : devices) {
      if (device.name == entry->ifa_name && !text.empty()) {
        device.addresses.push_back(text);
      }
    }
  }
}

}  // namespace

std::vector<NetworkDevice> runningDevices() {
  std::vector<NetworkDevice> devices = networkDevices(Root());
  const InterfaceAddresses list = interfaceAddresses();
  addFamily(list.get(), AF_INET, devices);
  addFamily(list.get(), AF_INET6, devices);
  return devices;
}

}  // namespace local
