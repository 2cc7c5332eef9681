#include "tests/bmc/control/control_client.h"

#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <string_view>

namespace bmc {
namespace {

// A socket that is closed with its owner.
class Socket {
 public:
  explicit Socket(int descriptor) : descriptor_(descriptor) {}
  ~Socket() {
    if (descriptor_ >= 0) {
      close(descriptor_);
    }
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

int connectTo(const std::string& address, std::uint16_t port) {
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (getaddrinfo(address.c_str(), std::to_string(port).c_str(), &hints,
                  &found) != 0) {
    return -1;
  }
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found,
                                                             freeaddrinfo);
  const int descriptor =
      socket(found->ai_family, found->ai_socktype | SOCK_CLOEXEC, 0);
  if (descriptor >= 0 &&
      connect(descriptor, found->ai_addr, found->ai_addrlen) != 0) {
    close(descriptor);
    return -1;
  }
  return descriptor;
}

bool sendAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent =
        send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

std::string receiveAll(int descriptor) {
  std::string bytes;
  std::array<char, 16 * 1024> block{};
  ssize_t count = 0;
  while ((count = recv(descriptor, block.data(), block.size(), 0)) > 0) {
    bytes.append(block.data(), static_cast<std::size_t>(count));
  }
  return bytes;
}

}  // namespace

std::string hostAndPort(const std::string& address, std::uint16_t port) {
  const bool literal6 = address.find(':') != std::string::npos;
  const std::string host = literal6 ? "[" + address + "]" : address;
  return host + ":" + std::to_string(port);
}

std::string askControl(const std::string& address, std::uint16_t port,
                       const std::string& target) {
  const Socket socket(connectTo(address, port));
  const std::string request = "GET " + target +
                              " HTTP/1.1\r\nHost: localhost\r\n"
                              "Connection: close\r\n\r\n";
  if (socket.get() < 0 || !sendAll(socket.get(), request)) {
    return {};
  }
  const std::string answer = receiveAll(socket.get());
  const std::size_t head = answer.find("\r\n\r\n");
  return head == std::string::npos ? std::string() : answer.substr(head + 4);
}

}  // namespace bmc
