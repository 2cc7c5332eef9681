// A whole run over a connection: the bytes that a controller sends become a
// reading. The connection is a real one, on loopback. An input is a row of
// parts with a line "%%" between: each request gets the next part as it stands;
// behind one that begins with "!" the connection is closed. When there are no
// more, or the client asks for no more, connections are closed, so that nothing
// waits long.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/http/network_transport.h"
#include "suite/redfish/service.h"

namespace {

using std::chrono::milliseconds;

// How long the next request may take before the connection is closed.
constexpr int kPatience = 20;  // Milliseconds.

// Answers requests with the parts of the input that it has at the time.
class Peer {
 public:
  Peer() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    require(socket_ >= 0 && ::bind(socket_, any, size) == 0 &&
            ::listen(socket_, 16) == 0 &&
            ::getsockname(socket_, any, &size) == 0);
    port_ = ntohs(address.sin_port);
    std::thread([this] { serve(); }).detach();
  }

  std::uint16_t port() const { return port_; }

  void answerBy(std::string_view input) {
    const std::lock_guard<std::mutex> lock(mutex_);
    rest_ = input;
  }

 private:
  // The next part of the input; false if there is none.
  bool take(std::string& part) {
    constexpr std::string_view kMark = "\n%%\n";
    const std::lock_guard<std::mutex> lock(mutex_);
    if (rest_.empty()) {
      return false;
    }
    const std::size_t end = rest_.find(kMark);
    part = rest_.substr(0, end);
    rest_.erase(0,
                end == std::string::npos ? rest_.size() : end + kMark.size());
    return true;
  }

  // Reads up to the end of a request's head, and what came along.
  static bool readRequest(int connection) {
    std::string request;
    char bytes[4096];
    while (request.find("\r\n\r\n") == std::string::npos) {
      pollfd ready = {connection, POLLIN, 0};
      const ssize_t got = ::poll(&ready, 1, kPatience) == 1
                              ? ::recv(connection, bytes, sizeof bytes, 0)
                              : 0;
      if (got <= 0) {
        return false;
      }
      request.append(bytes, static_cast<std::size_t>(got));
    }
    return true;
  }

  void serve() {
    while (true) {
      const int connection = ::accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
      std::string part;
      while (connection >= 0 && readRequest(connection) && take(part)) {
        const bool last = !part.empty() && part.front() == '!';
        const std::string_view bytes =
            std::string_view{part}.substr(last ? 1 : 0);
        if (::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0 ||
            last) {
          break;
        }
      }
      ::close(connection);
    }
  }

  int socket_;
  std::uint16_t port_ = 0;
  std::mutex mutex_;
  std::string rest_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  // Never destroyed: its thread serves until the process ends.
  static Peer& peer = *new Peer;
  const StepBudget budget(5000, 400, size);
  peer.answerBy({reinterpret_cast<const char*>(data), size});
  http::NetworkTransportOptions network;
  network.origin = {"127.0.0.1", peer.port(), true};
  network.maxConnections = 1;
  redfish::ServiceOptions options;
  options.user = "ada";
  options.password = base::Secret("Wal-kure");
  options.maxConnections = 1;
  options.requestTimeout = milliseconds(200);
  options.callTimeout = milliseconds(300);
  const auto begun = base::Clock::now();
  options.deadline = begun + options.callTimeout;
  redfish::Service service(std::move(options),
                           http::makeNetworkTransport(std::move(network)));
  redfish::Selection selection;
  selection.wants = redfish::kWantSystem | redfish::kWantHealth;
  const auto failure = service.read(selection);
  require(!failure || !base::describe(*failure).empty());
  service.close();
  // The end of the run, a second, and five for the logout.
  require(base::Clock::now() - begun < milliseconds(6300));
  return 0;
}
