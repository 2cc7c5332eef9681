#include "tests/suite/http/http2_peer.h"

#include "tests/bmc/wire/certificate.h"

namespace {

constexpr std::size_t kPrefaceBytes = 24;
constexpr std::size_t kFrameHeaderBytes = 9;
constexpr std::size_t kFloodBytes = 16000;  // Of one TLS record.

constexpr std::uint8_t kData = 0;
constexpr std::uint8_t kHeaders = 1;
constexpr std::uint8_t kSettings = 4;

constexpr std::uint8_t kAck = 1;
constexpr std::uint8_t kEndStream = 1;
constexpr std::uint8_t kEndHeaders = 4;

// ":status: 200" as an index into HPACK's static table (RFC 7541).
constexpr std::string_view kStatus200 = "\x88";

std::uint32_t bigEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (const char byte : bytes) {
    value = (value << 8U) | static_cast<std::uint8_t>(byte);
  }
  return value;
}

std::string frameOf(std::uint8_t type, std::uint8_t flags, std::uint32_t stream,
                    std::string_view payload) {
  std::string frame;
  const auto append = [&frame](std::uint32_t value, unsigned int bytes) {
    while (bytes-- > 0) {
      frame += static_cast<char>(value >> (8 * bytes));
    }
  };
  append(static_cast<std::uint32_t>(payload.size()), 3);
  append(type, 1);
  append(flags, 1);
  append(stream, 4);
  return frame.append(payload);
}

}  // namespace

TlsWish tlsForHttp2() {
  TlsWish tls = tlsWith(bmc::makeCertificate({}));
  tls.protocol = "h2";
  return tls;
}

Http2Peer::Http2Peer(Peer& peer) : peer_(peer) {
  peer_.readExactly(kPrefaceBytes);
  writeFrame(kSettings, 0, 0, "");
}

std::uint32_t Http2Peer::nextStream() {
  while (true) {
    const std::string header = peer_.readExactly(kFrameHeaderBytes);
    if (header.size() < kFrameHeaderBytes) {
      return 0;
    }
    const std::string_view view = header;
    peer_.readExactly(bigEndian(view.substr(0, 3)));
    const auto type = static_cast<std::uint8_t>(header[3]);
    const auto flags = static_cast<std::uint8_t>(header[4]);
    if (type == kSettings && (flags & kAck) == 0) {
      writeFrame(kSettings, kAck, 0, "");
    }
    if (type == kHeaders) {
      return bigEndian(view.substr(5, 4));
    }
  }
}

void Http2Peer::answer(std::uint32_t stream, std::string_view body) {
  beginAnswer(stream);
  writeFrame(kData, kEndStream, stream, body);
}

void Http2Peer::beginAnswer(std::uint32_t stream) {
  writeFrame(kHeaders, kEndHeaders, stream, kStatus200);
}

bool Http2Peer::writeFrame(std::uint8_t type, std::uint8_t flags,
                           std::uint32_t stream, std::string_view payload) {
  return peer_.write(frameOf(type, flags, stream, payload));
}

void Http2Peer::flood(std::uint8_t type, std::uint8_t flags,
                      std::uint32_t stream, std::string_view payload,
                      std::chrono::milliseconds time) {
  std::string many;
  while (many.size() < kFloodBytes) {
    many += frameOf(type, flags, stream, payload);
  }
  const auto end = std::chrono::steady_clock::now() + time;
  while (std::chrono::steady_clock::now() < end && peer_.write(many)) {
  }
}
