#include "suite/local/controller/discovery.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "suite/base/host_name.h"
#include "suite/local/controller/neighbour_posix.h"
#include "suite/platform/interrupt.h"

namespace local {
namespace {

using Clock = std::chrono::steady_clock;

// As many services as one search looks at.
constexpr std::size_t kMostAnswers = 8;

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

// An answer, and where it came from.
struct Answer {
  std::string text;
  sockaddr_storage sender = {};
  unsigned device = 0;  // The index of the one that it arrived on; 0: unknown.
};

// Takes a datagram that has arrived.
std::optional<Answer> receive(const Socket& socket) {
  Answer answer;
  char buffer[2048];
  iovec bytes = {buffer, sizeof buffer};
  alignas(cmsghdr) char extra[CMSG_SPACE(sizeof(in6_pktinfo))] = {};
  msghdr message = {};
  message.msg_name = &answer.sender;
  message.msg_namelen = sizeof answer.sender;
  message.msg_iov = &bytes;
  message.msg_iovlen = 1;
  message.msg_control = extra;
  message.msg_controllen = sizeof extra;
  const ssize_t count = recvmsg(socket.file(), &message, MSG_DONTWAIT);
  if (count < 0) {
    return std::nullopt;
  }
  answer.text.assign(buffer, static_cast<std::size_t>(count));
  if (const cmsghdr* const header = CMSG_FIRSTHDR(&message)) {
    if (header->cmsg_level == IPPROTO_IP && header->cmsg_type == IP_PKTINFO) {
      in_pktinfo info = {};
      std::memcpy(&info, CMSG_DATA(header), sizeof info);
      answer.device = static_cast<unsigned>(info.ipi_ifindex);
    } else if (header->cmsg_level == IPPROTO_IPV6 &&
               header->cmsg_type == IPV6_PKTINFO) {
      in6_pktinfo info = {};
      std::memcpy(&info, CMSG_DATA(header), sizeof info);
      answer.device = info.ipi6_ifindex;
    }
  }
  return answer;
}

// Waits until an answer is there. False at the limit, or if the user ends the
// run.
bool awaitAnswer(const Socket& socket, Clock::time_point until) {
  while (!platform::interrupted()) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        until - Clock::now());
    if (left.count() <= 0) {
      return false;
    }
    pollfd entries[] = {{socket.file(), POLLIN, 0},
                        {platform::interruptFd(), POLLIN, 0}};
    if (poll(entries, 2, static_cast<int>(left.count())) > 0 &&
        entries[0].revents != 0) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::vector<DiscoveredService> discoverServices(
    const std::string& device, std::string_view uuid,
    const DiscoveryOptions& options) {
  std::vector<DiscoveredService> found;
  const unsigned index = if_nametoindex(device.c_str());
  const bool ipv6 = base::isIpv6Host(options.group);
  const Socket socket(ipv6 ? AF_INET6 : AF_INET);
  const int on = 1;
  if (index == 0 || socket.file() < 0 ||
      !(ipv6 ? socket.set(IPPROTO_IPV6, IPV6_RECVPKTINFO, on)
             : socket.set(IPPROTO_IP, IP_PKTINFO, on)) ||
      !sendSearch(socket, index, options)) {
    return found;
  }
  Clock::time_point until = Clock::now() + options.timeout;
  while (found.size() < kMostAnswers && awaitAnswer(socket, until)) {
    const std::optional<Answer> answer = receive(socket);
    if (!answer) {
      break;
    }
    const auto port = parseSearchAnswer(answer->text, uuid);
    if (!port || answer->device != index ||
        !isNeighbour(reinterpret_cast<const sockaddr&>(answer->sender),
                     device)) {
      continue;
    }
    if (found.empty()) {
      until = std::min(until, Clock::now() + options.settling);
    }
    DiscoveredService service{senderText(answer->sender, device), *port};
    if (std::find(found.begin(), found.end(), service) == found.end()) {
      found.push_back(std::move(service));
    }
  }
  return found;
}

}  // namespace local
