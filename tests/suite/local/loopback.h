#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address_v4.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <cstdint>
#include <list>

namespace local {

/// A port of this machine's loopback that takes connections.
class LivingPort {
 public:
  LivingPort()
      : acceptor_(context_, {boost::asio::ip::address_v4::loopback(), 0}) {}

  std::uint16_t port() const { return acceptor_.local_endpoint().port(); }

 protected:
  using Tcp = boost::asio::ip::tcp;

  explicit LivingPort(int backlog) : acceptor_(context_) {
    const Tcp::endpoint any(boost::asio::ip::address_v4::loopback(), 0);
    acceptor_.open(any.protocol());
    acceptor_.bind(any);
    acceptor_.listen(backlog);
  }

  boost::asio::io_context context_;

 private:
  Tcp::acceptor acceptor_;
};

/// A port of loopback that answers nothing: those who connect wait, like those
/// who ask a host that is not there.
class SilentPort : public LivingPort {
 public:
  SilentPort() : LivingPort(0) {
    // Two connections fill the queue of a socket that accepts none.
    for (int i = 0; i < 2; ++i) {
      waiting_.emplace_back(context_);
      waiting_.back().async_connect(
          {boost::asio::ip::address_v4::loopback(), port()},
          [](const boost::system::error_code&) {});
    }
  }

 private:
  std::list<Tcp::socket> waiting_;
};

/// A port of loopback where nobody listens.
inline std::uint16_t deadPort() { return LivingPort().port(); }

}  // namespace local
