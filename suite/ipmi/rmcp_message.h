#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ipmi {

// The two questions that a management controller answers over UDP without a
// login: which IPMI it speaks (Get Channel Authentication Capabilities, IPMI
// 2.0 section 22.13, NetFn App, command 38h), and whether it is there (ASF 2.0
// presence ping, DSP0136). Pure functions of datagrams.

/// The request for the authentication capabilities of this channel as
/// administrator. `extended` asks for the data of IPMI 2.0, which controllers
/// of IPMI 1.5 may refuse.
std::string capabilitiesRequest(bool extended);

/// What a controller answers to `capabilitiesRequest`.
enum class Capabilities {
  kIpmi20,   ///< IPMI 2.0 over RMCP+.
  kIpmi15,   ///< IPMI 1.5 only.
  kRefused,  ///< A completion code other than 0. Ask again without the
             ///< extended data.
};

/// Reads a datagram as an answer to `capabilitiesRequest`. Returns nullopt if
/// its class, command, length or checksum is wrong.
std::optional<Capabilities> readCapabilities(std::string_view datagram);

/// The presence ping. The answer repeats its tag.
std::string presencePing(std::uint8_t tag);

/// Reads a datagram as the answer (pong) to the ping with this tag. Returns
/// whether the controller supports IPMI; nullopt if the datagram is no such
/// answer.
std::optional<bool> readPresencePong(std::string_view datagram,
                                     std::uint8_t tag);

}  // namespace ipmi
