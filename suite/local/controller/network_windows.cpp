// The order matters: the address types come before what uses them.
#include <winsock2.h>
#include <ws2tcpip.h>
// A blank line keeps the groups apart.
#include <iphlpapi.h>

#include <algorithm>
#include <boost/nowide/convert.hpp>
#include <string>
#include <vector>

#include "suite/local/controller/network.h"

namespace local {
namespace {

// The list as the system gives it; null when it does not.
const IP_ADAPTER_ADDRESSES* read(std::vector<unsigned char>& buffer) {
  constexpr ULONG kFlags = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST |
                           GAA_FLAG_SKIP_DNS_SERVER;
  // The size that is needed may grow between two calls.
  for (int attempt = 0; attempt < 3; ++attempt) {
    auto size = static_cast<ULONG>(buffer.size());
    auto* list = reinterpret_cast<IP_ADAPTER_ADDRESSES*>(buffer.data());
    const ULONG result =
        GetAdaptersAddresses(AF_UNSPEC, kFlags, nullptr, list, &size);
    if (result == ERROR_SUCCESS) {
      return list;
    }
    if (result != ERROR_BUFFER_OVERFLOW) {
      return nullptr;
    }
    buffer.resize(size);
  }
  return nullptr;
}

void addFamily(const IP_ADAPTER_ADDRESSES& adapter, int family,
               NetworkDevice& device) {
  for (auto* entry = adapter.FirstUnicastAddress; entry != nullptr;
       entry = entry->Next) {
    if (entry->Address.lpSockaddr->sa_family != family) {
      continue;
    }
    char text[NI_MAXHOST] = {};
    if (getnameinfo(entry->Address.lpSockaddr, entry->Address.iSockaddrLength,
                    text, sizeof text, nullptr, 0, NI_NUMERICHOST) != 0) {
      continue;
    }
    // The zone is added where an address is used.
    const std::string address = text;
    device.addresses.push_back(address.substr(0, address.find('%')));
  }
}

}  // namespace

std::vector<NetworkDevice> runningDevices() {
  std::vector<NetworkDevice> devices;
  WSADATA started = {};
  if (WSAStartup(MAKEWORD(2, 2), &started) != 0) {
    return devices;
  }
  std::vector<unsigned char> buffer(16384);
  for (auto* adapter = read(buffer); adapter != nullptr;
       adapter = adapter->Next) {
    NetworkDevice device;
    device.name = boost::nowide::narrow(adapter->FriendlyName);
    MacAddress mac = {};
    if (adapter->PhysicalAddressLength == mac.size()) {
      std::copy_n(adapter->PhysicalAddress, mac.size(), mac.begin());
      device.mac = mac;
    }
    device.up = adapter->OperStatus == IfOperStatusUp;
    addFamily(*adapter, AF_INET, device);
    addFamily(*adapter, AF_INET6, device);
    devices.push_back(std::move(device));
  }
  WSACleanup();
  return devices;
}

}  // namespace local
