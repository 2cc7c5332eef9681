#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bmc {

/// What an older controller answers on the port of IPMI over LAN.
enum class IpmiAnswer {
  kVersion20,  ///< IPMI 2.0 extended data.
  kVersion15,  ///< IPMI 1.5: the bit that asks for 2.0 data is ignored.
  kRejects20,  ///< IPMI 1.5: a request with that bit gets an error.
  kError,      ///< Every request gets an error.
  kBadChecksum,
  kTruncated,
  kGarbage,
  kSilent
};

/// How an older controller behaves.
struct IpmiSettings {
  IpmiAnswer channel = IpmiAnswer::kVersion20;
  bool pong = false;               ///< Answers presence pings (ASF 2.0).
  bool pongSaysIpmi = true;        ///< The pong claims to know IPMI.
  std::uint64_t ignoredFirst = 0;  ///< Datagrams that get lost before that.
};

/// The answer to one datagram (RMCP with IPMI 1.5 framing, IPMI 2.0 clause
/// 13; or an ASF presence ping, DSP0136); nothing when there is none.
std::optional<std::string> answerIpmi(std::string_view datagram,
                                      const IpmiSettings& settings);

}  // namespace bmc
