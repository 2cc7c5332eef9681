#include "tests/bmc/wire/listener.h"

#include <sys/socket.h>

#include <boost/asio/ip/address.hpp>
#include <cerrno>
#include <chrono>
#include <memory>
#include <utility>

#include "tests/bmc/wire/wire.h"

namespace bmc {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

// Pause before accepting again when the system has no descriptor left.
constexpr std::chrono::milliseconds kAcceptPause{50};

Listener::Listener(Environment& environment, asio::ssl::context* tls)
    : environment_(environment),
      tls_(tls),
      acceptor_(environment.io),
      pause_(environment.io) {}

bool Listener::start(const std::string& address, std::uint16_t port,
                     std::string& error) {
  error_code code;
  const auto parsed = asio::ip::make_address(address, code);
  const bool everywhere = !code && parsed == asio::ip::address_v4::any();
  if (!code && !everywhere && !parsed.is_loopback()) {
    error = address + ": only loopback addresses are served";
    return false;
  }
  const tcp::endpoint endpoint(parsed, port);
  if (!code) {
    acceptor_.open(endpoint.protocol(), code);
  }
  if (!code && everywhere &&
      setsockopt(acceptor_.native_handle(), SOL_SOCKET, SO_BINDTODEVICE, "lo",
                 sizeof("lo")) != 0) {
    code = error_code(errno, boost::system::system_category());
  }
  if (!code) {
    acceptor_.set_option(tcp::acceptor::reuse_address(true), code);
  }
  if (!code) {
    acceptor_.bind(endpoint, code);
  }
  if (!code) {
    acceptor_.listen(asio::socket_base::max_listen_connections, code);
  }
  if (code) {
    error = address + ":" + std::to_string(port) + ": " + code.message();
    return false;
  }
  accept();
  return true;
}

std::uint16_t Listener::port() const {
  error_code code;
  return acceptor_.local_endpoint(code).port();
}

void Listener::accept() {
  acceptor_.async_accept([this](const error_code& error, tcp::socket socket) {
    if (!error) {
      admit(std::move(socket));
      accept();
    } else if (error != asio::error::operation_aborted) {
      pause_.expires_after(kAcceptPause);
      pause_.async_wait([this](const error_code& stopped) {
        if (!stopped) {
          accept();
        }
      });
    }
  });
}

void Listener::admit(tcp::socket socket) {
  const std::uint64_t number = ++environment_.counters.connections;
  const ConnectionPlan plan = environment_.policy.plan(number);
  const bool secure =
      tls_ != nullptr && !plan.plainText && plan.onAccept == Admission::kServe;
  auto wire = secure ? makeTlsWire(std::move(socket), *tls_)
                     : makePlainWire(std::move(socket));
  const char* port = tls_ != nullptr ? "https" : "http";
  std::make_shared<Connection>(std::move(wire), environment_, plan, number,
                               port)
      ->start();
}

}  // namespace bmc
