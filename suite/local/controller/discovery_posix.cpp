#include "suite/local/controller/discovery.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstddef>

#include "suite/base/host_name.h"

namespace local {
namespace {

using Clock = std::chrono::steady_clock;

// A socket that is closed when it goes.
class Socket {
 public:
  explicit Socket(int family)
      : file_(socket(family, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {}
  ~Socket() {
    if (file_ >= 0) {
      close(file_);
    }
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  int file() const { return file_; }

  template <typename Value>
  bool set(int level, int name, const Value& value) const {
    return setsockopt(file_, level, name, &value, sizeof value) == 0;
  }

 private:
  int file_;
};

std::string searchText(const DiscoveryOptions& options) {
  return "M-SEARCH * HTTP/1.1\r\nHOST: " + base::bracketed(options.group) +
         ":" + std::to_string(options.port) +
         "\r\nMAN: \"ssdp:discover\"\r\nMX: 1\r\nST: " +
         std::string(kRedfishServiceType) + "\r\n\r\n";
}

// Sends the search out of the one device only.
bool sendSearch(const Socket& socket, unsigned device,
                const DiscoveryOptions& options) {
  const std::string text = searchText(options);
  sockaddr_in group4 = {};
  sockaddr_in6 group6 = {};
  const sockaddr* to = nullptr;
  socklen_t length = 0;
  if (inet_pton(AF_INET, options.group.c_str(), &group4.sin_addr) == 1) {
    ip_mreqn out = {};
    out.imr_ifindex = static_cast<int>(device);
    if (!socket.set(IPPROTO_IP, IP_MULTICAST_IF, out)) {
      return false;
    }
    group4.sin_family = AF_INET;
    group4.sin_port = htons(options.port);
    to = reinterpret_cast<const sockaddr*>(&group4);
    length = sizeof group4;
  } else if (inet_pton(AF_INET6, options.group.c_str(), &group6.sin6_addr) ==
             1) {
    const int out = static_cast<int>(device);
    if (!socket.set(IPPROTO_IPV6, IPV6_MULTICAST_IF, out)) {
      return false;
    }
    group6.sin6_family = AF_INET6;
    group6.sin6_port = htons(options.port);
    group6.sin6_scope_id = device;
    to = reinterpret_cast<const sockaddr*>(&group6);
    length = sizeof group6;
  } else {
    return false;
  }
  return sendto(socket.file(), text.data(), text.size(), 0, to, length) ==
         static_cast<ssize_t>(text.size());
}

std::string senderText(const sockaddr_storage& sender,
                       const std::string& device) {
  char text[INET6_ADDRSTRLEN] = {};
  if (sender.ss_family == AF_INET) {
    const auto& ipv4 = reinterpret_cast<const sockaddr_in&>(sender);
    inet_ntop(AF_INET, &ipv4.sin_addr, text, sizeof text);
    return text;
  }
  const auto& ipv6 = reinterpret_cast<const sockaddr_in6&>(sender);
  inet_ntop(AF_INET6, &ipv6.sin6_addr, text, sizeof text);
  const bool linkLocal = IN6_IS_ADDR_LINKLOCAL(&ipv6.sin6_addr);
  return linkLocal ? text + ("%" + device) : text;
}

}  // namespace

std::optional<DiscoveredService> discoverService(
    const std::string& device, std::string_view uuid,
    const DiscoveryOptions& options) {
  const unsigned index = if_nametoindex(device.c_str());
  const bool ipv6 = base::isIpv6Host(options.group);
  const Socket socket(ipv6 ? AF_INET6 : AF_INET);
  if (index == 0 || socket.file() < 0 || !sendSearch(socket, index, options)) {
    return std::nullopt;
  }
  const Clock::time_point until = Clock::now() + options.timeout;
  while (true) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        until - Clock::now());
    pollfd entry = {socket.file(), POLLIN, 0};
    if (left.count() <= 0 ||
        poll(&entry, 1, static_cast<int>(left.count())) <= 0) {
      return std::nullopt;
    }
    char buffer[2048];
    sockaddr_storage sender = {};
    socklen_t length = sizeof sender;
    const ssize_t count =
        recvfrom(socket.file(), buffer, sizeof buffer, 0,
                 reinterpret_cast<sockaddr*>(&sender), &length);
    if (count < 0) {
      return std::nullopt;
    }
    const auto port =
        parseSearchAnswer({buffer, static_cast<std::size_t>(count)}, uuid);
    if (port) {
      return DiscoveredService{senderText(sender, device), *port};
    }
  }
}

}  // namespace local
