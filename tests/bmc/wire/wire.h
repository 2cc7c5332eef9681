#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/system/error_code.hpp>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace bmc {

/// What a TLS handshake agreed on.
struct TlsFacts {
  std::string version;     ///< "TLSv1.3"; empty without TLS.
  bool resumed = false;    ///< An earlier session was taken up again.
  std::string serverName;  ///< As the client named it; may be empty.
};

/// The byte stream of one connection, with or without TLS. One read and one
/// write may be under way at a time. Handlers run on the stream's executor,
/// never inside the call that starts them. Destroying it closes the socket.
class Wire {
 public:
  using Done =
      std::function<void(const boost::system::error_code&, std::size_t)>;
  using Shaken = std::function<void(const boost::system::error_code&)>;
  /// Told whether a client that begins a handshake offers to take up an
  /// earlier session; answers when the handshake may go on.
  using Begun =
      std::function<std::chrono::steady_clock::time_point(bool offersSession)>;

  virtual ~Wire() = default;

  /// Does the TLS handshake; without TLS there is none, and all is well.
  /// `begun` is called once, and never without TLS. The stream must stay until
  /// `done` is called.
  virtual void handshake(Begun begun, Shaken done) = 0;

  /// Reads some bytes. `into` must stay until `done` is called.
  virtual void read(char* into, std::size_t size, Done done) = 0;

  /// Writes all the bytes, which must stay until `done` is called.
  virtual void write(std::string_view bytes, Done done) = 0;

  /// Closes in order, TLS included.
  virtual void close() = 0;

  /// Tears the connection down with a TCP reset.
  virtual void reset() = 0;

  virtual TlsFacts tls() const = 0;
};

std::unique_ptr<Wire> makePlainWire(boost::asio::ip::tcp::socket socket);

/// `context` must outlive the wire.
std::unique_ptr<Wire> makeTlsWire(boost::asio::ip::tcp::socket socket,
                                  boost::asio::ssl::context& context);

}  // namespace bmc
