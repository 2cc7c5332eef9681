#include "tests/bmc/ipmi/ipmi.h"

#include <numeric>

#include "tests/bmc/wire/generated_body.h"

namespace bmc {
namespace {

using namespace std::string_literals;

// Offsets in a request as IPMI 2.0 table 13-8 lays it out: RMCP header (4),
// session header without authentication code (10), message.
constexpr std::size_t kMessageStart = 14;
constexpr std::size_t kSequence = kMessageStart + 4;
constexpr std::size_t kCommand = kMessageStart + 5;
constexpr std::size_t kChannel = kMessageStart + 6;
constexpr std::size_t kRequestSize = kMessageStart + 9;

constexpr char kChannelAuthenticationCapabilities = 0x38;
constexpr unsigned char kAsksFor20 = 0x80;

const std::string kRmcpIpmi = "\x06\x00\xff\x07"s;
const std::string kRmcpAsf = "\x06\x00\xff\x06"s;
const std::string kAsfEnterprise = "\x00\x00\x11\xbe"s;

bool startsWith(std::string_view text, const std::string& start) {
  return text.substr(0, start.size()) == start;
}

// Two's complement of the sum: with it, the bytes add up to 0.
char checksum(std::string_view bytes) {
  return static_cast<char>(-std::accumulate(bytes.begin(), bytes.end(), 0));
}

std::string frame(char sequence, const std::string& codeAndData) {
  std::string message = "\x81\x1c"s;  // To remote console; NetFn 07h, LUN 0.
  message += checksum(message);
  std::string tail = "\x20"s + sequence + kChannelAuthenticationCapabilities;
  tail += codeAndData;
  message += tail + checksum(tail);
  return kRmcpIpmi + std::string(9, '\0') + static_cast<char>(message.size()) +
         message;
}

std::string capabilities(bool extended) {
  // Completion code; channel 1; types none, MD5 and password (bit 7: 2.0
  // data follow); user-level authentication; extended capabilities (bits 1
  // and 0: 2.0 and 1.5); OEM bytes.
  return extended ? "\x00\x01\x95\x04\x03\x00\x00\x00\x00"s
                  : "\x00\x01\x15\x04\x00\x00\x00\x00\x00"s;
}

std::string presencePong(char tag, bool saysIpmi) {
  std::string pong = kRmcpAsf + kAsfEnterprise + "\x40"s + tag + "\x00\x10"s;
  pong += kAsfEnterprise + std::string(4, '\0');
  pong += saysIpmi ? '\x81' : '\x01';  // Supported entities: IPMI, ASF 1.0.
  return pong + std::string(7, '\0');
}

std::optional<std::string> answerPing(std::string_view ping,
                                      const IpmiSettings& settings) {
  constexpr std::size_t kType = 8;
  constexpr std::size_t kTag = 9;
  constexpr std::size_t kSize = 12;
  constexpr char kPresencePing = '\x80';
  if (!settings.pong || ping.size() < kSize || ping[kType] != kPresencePing) {
    return std::nullopt;
  }
  return presencePong(ping[kTag], settings.pongSaysIpmi);
}

}  // namespace

std::optional<std::string> answerIpmi(std::string_view datagram,
                                      const IpmiSettings& settings) {
  if (startsWith(datagram, kRmcpAsf)) {
    return answerPing(datagram, settings);
  }
  if (!startsWith(datagram, kRmcpIpmi) || datagram.size() != kRequestSize ||
      datagram[kCommand] != kChannelAuthenticationCapabilities) {
    return std::nullopt;
  }
  const char sequence = datagram[kSequence];
  const bool asksFor20 =
      (static_cast<unsigned char>(datagram[kChannel]) & kAsksFor20) != 0;
  const std::string invalidField = "\xcc"s;
  switch (settings.channel) {
    case IpmiAnswer::kVersion20:
      return frame(sequence, capabilities(asksFor20));
    case IpmiAnswer::kVersion15:
      return frame(sequence, capabilities(false));
    case IpmiAnswer::kRejects20:
      return frame(sequence, asksFor20 ? invalidField : capabilities(false));
    case IpmiAnswer::kError:
      return frame(sequence, invalidField);
    case IpmiAnswer::kBadChecksum: {
      std::string answer = frame(sequence, capabilities(asksFor20));
      answer.back() = static_cast<char>(answer.back() + 1);
      return answer;
    }
    case IpmiAnswer::kTruncated: {
      const std::string whole = frame(sequence, capabilities(asksFor20));
      return whole.substr(0, whole.size() / 2);
    }
    case IpmiAnswer::kGarbage:
      return noise(64);
    case IpmiAnswer::kSilent:
      break;
  }
  return std::nullopt;
}

}  // namespace bmc
