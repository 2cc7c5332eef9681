#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ipmi {

// The two questions that a management controller answers over UDP without a
// login: which IPMI it speaks (Get Channel Authentication Capabilities, IPMI
// 2.0 section 22.13, NetFn App, command 38h), and whether it is there at all
// (ASF 2.0 presence ping, DSP0136). Pure functions on datagrams.

/// The request for the authentication capabilities of this channel as
/// administrator. `extended` asks for the data of IPMI 2.0, which controllers
/// of IPMI 1.5 may refuse.
std::string capabilitiesRequest(bool extended);

/// What an answer to it says.
enum class Capabilities {
  kIpmi20,   ///< IPMI 2.0 over RMCP+.
  kIpmi15,   ///< IPMI 1.5 only.
  kRefused,  ///< A completion code other than 0: to be asked without the
             ///< extended data.
};

/// Reads a datagram as an answer to `capabilitiesRequest`; nullopt if it is
/// none: wrong class, command, length or checksum.
std::optional<Capabilities> readCapabilities(std::string_view datagram);

/// The presence ping with a tag of the caller's.
std::string presencePing(std::uint8_t tag);

/// Reads a datagram as the pong to a ping of this tag: whether the controller
/// supports IPMI. Returns nullopt if it is none.
std::optional<bool> readPresencePong(std::string_view datagram,
                                     std::uint8_t tag);

}  // namespace ipmi
