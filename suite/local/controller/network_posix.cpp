#include "suite/local/controller/network.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <memory>
#include <string>

namespace local {
namespace {

struct FreeAddresses {
  void operator()(ifaddrs* list) const { freeifaddrs(list); }
};

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
  ifaddrs* list = nullptr;
  if (getifaddrs(&list) != 0) {
    return devices;
  }
  const std::unique_ptr<ifaddrs, FreeAddresses> owner(list);
  addFamily(list, AF_INET, devices);
  addFamily(list, AF_INET6, devices);
  return devices;
}

}  // namespace local
