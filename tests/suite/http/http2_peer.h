#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "tests/suite/http/scripted_server.h"

/// TLS with a certificate of its own, over which HTTP/2 is chosen.
TlsWish tlsForHttp2();

/// Just enough of HTTP/2 (RFC 9113) to answer requests with "200 OK" and a
/// body, whatever they ask.
class Http2Peer {
 public:
  /// Takes the client's preface and says our settings.
  explicit Http2Peer(Peer& peer);

  /// Waits for the next request; its stream, or 0 when the client has gone.
  std::uint32_t nextStream();

  void answer(std::uint32_t stream, std::string_view body);

  /// Sends the head of an answer, whose body is to follow.
  void beginAnswer(std::uint32_t stream);

  /// Sends a frame as it is told; false when the client has gone.
  bool writeFrame(std::uint8_t type, std::uint8_t flags, std::uint32_t stream,
                  std::string_view payload);

  /// Sends a frame again and again, as fast as it is read, until the client
  /// goes or so much time has passed.
  void flood(std::uint8_t type, std::uint8_t flags, std::uint32_t stream,
             std::string_view payload, std::chrono::milliseconds time);

 private:
  Peer& peer_;
};
