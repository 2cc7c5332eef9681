#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace local {

/// What a Redfish service calls itself in a search (DSP0266).
inline constexpr std::string_view kRedfishServiceType =
    "urn:dmtf-org:service:redfish-rest:1";

/// Where a Redfish service answered.
struct DiscoveredService {
  std::string address;  ///< Of the sender, with the zone where it needs one.
  std::uint16_t port = 443;
};

inline bool operator==(const DiscoveredService& a, const DiscoveredService& b) {
  return a.address == b.address && a.port == b.port;
}

/// How a search is sent. The defaults are those of DSP0266, clause
/// "Discovery": SSDP on the local link.
struct DiscoveryOptions {
  std::string group = "239.255.255.250";  ///< IPv4, or "ff02::c" for IPv6.
  std::uint16_t port = 1900;
  std::chrono::milliseconds timeout{2000};
  /// How long further answers are waited for after the first one.
  std::chrono::milliseconds settling{200};
};

/// Asks on one network device for Redfish services, and returns those that
/// answered, in their order; empty if none did in time. `uuid`, unless empty,
/// is the service's own: answers of others are ignored. An answer is accepted
/// only if it arrives on that device, from an address in the device's own
/// network that is not this machine's. Only the port is taken from it, so that
/// a search cannot lead to another host.
std::vector<DiscoveredService> discoverServices(
    const std::string& device, std::string_view uuid,
    const DiscoveryOptions& options = {});

/// The port of the service in an answer to a search. Returns nullopt if it is
/// no such answer, not from a Redfish service, or from another one than `uuid`
/// (empty: any).
std::optional<std::uint16_t> parseSearchAnswer(std::string_view answer,
                                               std::string_view uuid);

}  // namespace local
