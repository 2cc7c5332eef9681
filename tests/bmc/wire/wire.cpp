#include "tests/bmc/wire/wire.h"

#include <boost/asio/post.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <utility>

#include "tests/bmc/wire/client_hello.h"

namespace bmc {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

// How long an orderly end of TLS may wait for the other side.
constexpr std::chrono::seconds kShutdownTime{1};

// Errors of socket options and of closing have no remedy: the socket is gone
// then, and the next read or write says so.

void configure(tcp::socket& socket) {
  error_code ignored;
  socket.set_option(tcp::no_delay(true), ignored);
}

void closeSocket(tcp::socket& socket) {
  error_code ignored;
  socket.shutdown(tcp::socket::shutdown_both, ignored);
  socket.close(ignored);
}

void resetSocket(tcp::socket& socket) {
  error_code ignored;
  socket.set_option(asio::socket_base::linger(true, 0), ignored);
  socket.close(ignored);
}

class PlainWire : public Wire {
 public:
  explicit PlainWire(tcp::socket socket) : socket_(std::move(socket)) {
    configure(socket_);
  }

  void handshake(Begun /*begun*/, Shaken done) override {
    asio::post(socket_.get_executor(),
               [done = std::move(done)] { done(error_code()); });
  }

  void read(char* into, std::size_t size, Done done) override {
    socket_.async_read_some(asio::buffer(into, size), std::move(done));
  }

  void write(std::string_view bytes, Done done) override {
    asio::async_write(socket_, asio::buffer(bytes.data(), bytes.size()),
                      std::move(done));
  }

  void close() override { closeSocket(socket_); }
  void reset() override { resetSocket(socket_); }
  TlsFacts tls() const override { return {}; }

 private:
  tcp::socket socket_;
};

using TlsStream = asio::ssl::stream<tcp::socket>;

// Says goodbye as TLS wants it, then closes; holds the stream until then.
class TlsShutdown : public std::enable_shared_from_this<TlsShutdown> {
 public:
  explicit TlsShutdown(std::shared_ptr<TlsStream> stream)
      : stream_(std::move(stream)),
        timer_(stream_->get_executor(), kShutdownTime) {}

  void start() {
    timer_.async_wait([self = shared_from_this()](const error_code& error) {
      if (!error) {
        closeSocket(self->stream_->next_layer());
      }
    });
    stream_->async_shutdown([self = shared_from_this()](const error_code&) {
      self->timer_.cancel();
      closeSocket(self->stream_->next_layer());
    });
  }

 private:
  std::shared_ptr<TlsStream> stream_;
  asio::steady_timer timer_;
};

class TlsWire : public Wire {
 public:
  TlsWire(tcp::socket socket, asio::ssl::context& context)
      : stream_(std::make_shared<TlsStream>(std::move(socket), context)),
        timer_(stream_->get_executor()) {
    configure(stream_->next_layer());
    stop_.install(stream_->native_handle());
  }

  void handshake(Begun begun, Shaken done) override {
    stream_->async_handshake(TlsStream::server,
                             [this, begun = std::move(begun),
                              done = std::move(done)](const error_code& error) {
                               if (stop_.stopped()) {
                                 goOnAt(begun(stop_.offersSession()), done);
                               } else {
                                 done(error);
                               }
                             });
  }

  void read(char* into, std::size_t size, Done done) override {
    stream_->async_read_some(asio::buffer(into, size), std::move(done));
  }

  void write(std::string_view bytes, Done done) override {
    asio::async_write(*stream_, asio::buffer(bytes.data(), bytes.size()),
                      std::move(done));
  }

  void close() override { std::make_shared<TlsShutdown>(stream_)->start(); }
  void reset() override { resetSocket(stream_->next_layer()); }

  TlsFacts tls() const override {
    SSL* handle = stream_->native_handle();
    TlsFacts facts;
    facts.version = SSL_get_version(handle);
    facts.resumed = SSL_session_reused(handle) == 1;
    const char* name = SSL_get_servername(handle, TLSEXT_NAMETYPE_host_name);
    if (name != nullptr) {
      facts.serverName = name;
    }
    return facts;
  }

 private:
  void goOnAt(std::chrono::steady_clock::time_point when, const Shaken& done) {
    timer_.expires_at(when);
    timer_.async_wait([this, done](const error_code& error) {
      if (error) {
        done(error);
      } else {
        stream_->async_handshake(TlsStream::server, done);
      }
    });
  }

  HelloStop stop_;
  std::shared_ptr<TlsStream> stream_;
  asio::steady_timer timer_;
};

}  // namespace

std::unique_ptr<Wire> makePlainWire(tcp::socket socket) {
  return std::make_unique<PlainWire>(std::move(socket));
}

std::unique_ptr<Wire> makeTlsWire(tcp::socket socket,
                                  asio::ssl::context& context) {
  return std::make_unique<TlsWire>(std::move(socket), context);
}

}  // namespace bmc
