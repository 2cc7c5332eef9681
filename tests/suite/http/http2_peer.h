#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tests/suite/http/scripted_server.h"

/// Just enough of HTTP/2 (RFC 9113) to answer requests with "200 OK" and a
/// body, whatever they ask.
class Http2Peer {
 public:
  /// Takes the client's preface and says our settings.
  explicit Http2Peer(Peer& peer);

  /// Waits for the next request; its stream, or 0 when the client has gone.
  std::uint32_t nextStream();

  void answer(std::uint32_t stream, std::string_view body);

  /// Sends a frame as it is told.
  void writeFrame(std::uint8_t type, std::uint8_t flags, std::uint32_t stream,
                  std::string_view payload);

 private:
  Peer& peer_;
};
