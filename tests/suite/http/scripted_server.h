#pragma once

#include <openssl/ssl.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "tests/bmc/wire/certificate.h"

/// How a scripted server speaks TLS.
struct TlsWish {
  bmc::Identity identity;  ///< Empty: no TLS.
  int lowestVersion = TLS1_2_VERSION;
  int highestVersion = TLS1_3_VERSION;
  std::string protocol;  ///< The one to choose by ALPN; empty: none.
};

/// TLS 1.2 and 1.3 with a certificate.
TlsWish tlsWith(bmc::Identity identity);

/// The server's end of one connection, as a script uses it.
class Peer {
 public:
  Peer(int socket, int stop, SSL* tls)
      : socket_(socket), stop_(stop), tls_(tls) {}

  /// The next request, head and body; empty when the client has gone.
  std::string readRequest();

  /// At least one byte, at most `limit`; empty when the client has gone.
  std::string read(std::size_t limit);

  /// Exactly so many bytes; fewer when the client has gone.
  std::string readExactly(std::size_t bytes);

  /// False when the client has gone.
  bool write(std::string_view text);

  /// Waits until the client or the server goes away.
  void hang();

  /// Waits; false when the server goes away meanwhile.
  bool pause(std::chrono::milliseconds time);

  /// Whether TLS took an earlier connection up again.
  bool resumed() const;

  /// The protocol chosen by ALPN; empty: none.
  std::string protocol() const;

  /// Ends the connection in order, by TLS's own words as well.
  void close();

  /// Ends it so that the client's system reports a reset.
  void reset() const;

 private:
  bool waitFor(short events, int milliseconds);

  int socket_;
  int stop_;
  SSL* tls_;
  std::string buffer_;
};

/// A server on the loopback interface whose script says what it does with each
/// connection. The connection ends when the script returns.
class ScriptedServer {
 public:
  using Script = std::function<void(Peer&)>;

  explicit ScriptedServer(Script script, const TlsWish& tls = {});
  ~ScriptedServer();

  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  std::uint16_t port() const { return port_; }
  int connections() const { return connections_; }

 private:
  struct FreeContext {
    void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
  };

  void accept();
  void serve(int socket);

  Script script_;
  std::unique_ptr<SSL_CTX, FreeContext> context_;
  std::string protocols_;  ///< As ALPN lists them (RFC 7301).
  int listener_ = -1;
  int stop_ = -1;  ///< Readable when the server is to end.
  std::uint16_t port_ = 0;
  std::atomic<int> connections_{0};
  std::mutex mutex_;  ///< Guards threads_.
  std::list<std::thread> threads_;
  std::thread acceptor_;
};

/// A script that answers every request of a connection by a function of the
/// request, until the client goes or the answer is empty.
ScriptedServer::Script answering(
    std::function<std::string(const std::string& request)> answer);

/// An answer with a body and its right length. `headers` are lines that end
/// in CR LF.
std::string httpAnswer(int status, std::string_view body,
                       std::string_view headers = "");
