#pragma once

#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>

namespace bmc {

/// Stops a server's handshake when the client's first message is there, so
/// that something can be done before the rest of it. Belongs to one
/// connection and outlives its stream.
class HelloStop {
 public:
  /// Makes the connections of a context stop, if they have one of these.
  static void prepare(boost::asio::ssl::context& context);

  /// Stops the handshake of this connection once: it then ends with an error,
  /// and goes on when it is started again.
  void install(SSL* connection);

  /// Whether the handshake has been stopped.
  bool stopped() const { return stopped_; }

  /// Whether the client offers to take up an earlier session: by a ticket, or
  /// before TLS 1.3 also by the session's number.
  bool offersSession() const { return offersSession_; }

 private:
  static int onHello(SSL* connection, int* alert, void* unused);

  bool stopped_ = false;
  bool offersSession_ = false;
};

}  // namespace bmc
