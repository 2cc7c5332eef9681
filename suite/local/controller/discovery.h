#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace local {

/// What a Redfish service calls itself in a search (DSP0266).
inline constexpr std::string_view kRedfishServiceType =
    "urn:dmtf-org:service:redfish-rest:1";

/// Where a Redfish service answered.
struct DiscoveredService {
  std::string address;  ///< Of the sender, with the zone where it needs one.
  std::uint16_t port = 443;
};

/// How a search is sent. The defaults are those of DSP0266, clause
/// "Discovery": SSDP on the local link.
struct DiscoveryOptions {
  std::string group = "239.255.255.250";  ///< IPv4, or "ff02::c" for IPv6.
  std::uint16_t port = 1900;
  std::chrono::milliseconds timeout{2000};
};

/// Asks on one network device for a Redfish service. `uuid`, unless empty, is
/// the service's own: answers of others are not taken. Nothing when none
/// answered in time. The answer's own address is believed, and of what it
/// says only the port: the search must not lead to another host.
std::optional<DiscoveredService> discoverService(
    const std::string& device, std::string_view uuid,
    const DiscoveryOptions& options = {});

/// The port of the service in an answer to a search; nothing when the answer
/// is none, is not that of a Redfish service, or is that of another one than
/// `uuid` (empty: any).
std::optional<std::uint16_t> parseSearchAnswer(std::string_view answer,
                                               std::string_view uuid);

}  // namespace local
