#include "suite/ipmi/rmcp_message.h"

#include <cstddef>
#include <initializer_list>

namespace ipmi {
namespace {

constexpr std::uint8_t kClassAsf = 0x06;
constexpr std::uint8_t kClassIpmi = 0x07;

// Offsets into an IPMI 1.5 packet without a session: RMCP header, then
// authentication type, sequence, session id and length, then the message.
constexpr std::size_t kMessageLength = 13;
constexpr std::size_t kMessage = 14;

// Offsets into the answer's message (IPMI 2.0, section 13.8).
constexpr std::size_t kNetFn = 1;
constexpr std::size_t kHeaderChecksum = 2;
constexpr std::size_t kCommand = 5;
constexpr std::size_t kCompletion = 6;
constexpr std::size_t kData = 7;

constexpr std::uint8_t kNetFnAppResponse = 0x1C;
constexpr std::uint8_t kGetCapabilities = 0x38;

std::string bytes(std::initializer_list<int> values) {
  std::string text;
  for (const int value : values) {
    text += static_cast<char>(value);
  }
  return text;
}

std::uint8_t at(std::string_view text, std::size_t place) {
  return static_cast<std::uint8_t>(text[place]);
}

// Bytes followed by their checksum add up to 0 modulo 256.
bool sumsToZero(std::string_view text) {
  unsigned sum = 0;
  for (const char byte : text) {
    sum += static_cast<std::uint8_t>(byte);
  }
  return (sum & 0xFFU) == 0;
}

bool hasRmcpHeader(std::string_view datagram, std::uint8_t messageClass) {
  return datagram.size() >= 4 && at(datagram, 0) == 0x06 &&
         (at(datagram, 3) & 0x1FU) == messageClass;
}

}  // namespace

std::string capabilitiesRequest(bool extended) {
  // 8Eh: this channel, give the data of IPMI 2.0; 0Eh: without it. The last
  // byte is the checksum of what follows the first one.
  const int channel = extended ? 0x8E : 0x0E;
  const int checksum = extended ? 0xB5 : 0x35;
  return bytes({0x06,    0x00, 0xFF,    kClassIpmi, 0x00,
                0x00,    0x00, 0x00,    0x00,       0x00,
                0x00,    0x00, 0x00,    0x09,       0x20,
                0x18,    0xC8, 0x81,    0x00,       kGetCapabilities,
                channel, 0x04, checksum});
}

std::optional<Capabilities> readCapabilities(std::string_view datagram) {
  if (!hasRmcpHeader(datagram, kClassIpmi) || datagram.size() <= kMessage) {
    return std::nullopt;
  }
  const std::size_t length = at(datagram, kMessageLength);
  if (datagram.size() < kMessage + length || length < kData + 1) {
    return std::nullopt;
  }
  const std::string_view message = datagram.substr(kMessage, length);
  if (at(message, kNetFn) != kNetFnAppResponse ||
      at(message, kCommand) != kGetCapabilities ||
      !sumsToZero(message.substr(0, kHeaderChecksum + 1)) ||
      !sumsToZero(message.substr(kHeaderChecksum + 1))) {
    return std::nullopt;
  }
  if (at(message, kCompletion) != 0) {
    return Capabilities::kRefused;
  }
  // Data bytes counted from 1: channel, authentication types (bit 7: extended
  // data follow), status, extended capabilities (bit 1: IPMI 2.0).
  const std::string_view data = message.substr(kData, length - kData - 1);
  const bool extended = data.size() >= 4 && (at(data, 1) & 0x80U) != 0 &&
                        (at(data, 3) & 0x02U) != 0;
  return extended ? Capabilities::kIpmi20 : Capabilities::kIpmi15;
}

std::string presencePing(std::uint8_t tag) {
  return bytes({0x06, 0x00, 0xFF, kClassAsf, 0x00, 0x00, 0x11, 0xBE, 0x80, tag,
                0x00, 0x00});
}

std::optional<bool> readPresencePong(std::string_view datagram,
                                     std::uint8_t tag) {
  constexpr std::size_t kType = 8;
  constexpr std::size_t kTag = 9;
  constexpr std::size_t kEntities = 20;
  if (!hasRmcpHeader(datagram, kClassAsf) || datagram.size() <= kEntities ||
      datagram.substr(4, 4) != bytes({0x00, 0x00, 0x11, 0xBE}) ||
      at(datagram, kType) != 0x40 || at(datagram, kTag) != tag) {
    return std::nullopt;
  }
  return (at(datagram, kEntities) & 0x80U) != 0;
}

}  // namespace ipmi
