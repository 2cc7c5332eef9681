#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cstdint>
#include <string>

#include "tests/bmc/wire/connection.h"

namespace bmc {

/// Accepts the connections of one port.
class Listener {
 public:
  /// `tls` is none for plain HTTP. Everything given outlives the listener.
  Listener(Environment& environment, boost::asio::ssl::context* tls);

  /// Listens on an address and port (0: any free one) and accepts from then
  /// on. False, and the reason in `error`, when that fails.
  bool start(const std::string& address, std::uint16_t port,
             std::string& error);

  /// The port that it listens on.
  std::uint16_t port() const;

 private:
  void accept();
  void admit(boost::asio::ip::tcp::socket socket);

  Environment& environment_;
  boost::asio::ssl::context* tls_;
  boost::asio::ip::tcp::acceptor acceptor_;
  boost::asio::steady_timer pause_;
};

}  // namespace bmc
