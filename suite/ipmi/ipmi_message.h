#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/base/byte_view.h"

namespace ipmi {

// The few messages of the Intelligent Platform Management Interface that are
// exchanged with the machine's own controller: what is sent, and what the
// answers say. No device is touched here.

/// A command to the controller.
struct IpmiRequest {
  std::uint8_t netFunction = 0;
  std::uint8_t command = 0;
  std::vector<std::uint8_t> data;
};

/// The answer's data behind the completion code.
struct IpmiResponse {
  std::uint8_t completion = 0;  ///< 0: success.
  std::string data;
};

/// Get Device ID (IPMI 2.0, 20.1).
IpmiRequest getDeviceIdRequest();

/// The IPMI version in an answer to Get Device ID: 20 for 2.0, 15 for 1.5.
/// Returns nullopt if the answer is a failure or too short.
std::optional<int> ipmiVersion(const IpmiResponse& response);

/// An account that the controller made for this machine.
struct BootstrapAccount {
  std::string user;
  std::string password;
};

/// Get Bootstrap Account Credentials (DSP0270), in the form that leaves
/// bootstrapping enabled: any other would switch it off until the next reset.
IpmiRequest bootstrapRequest();

/// The account in the answer to it; nullopt if the controller refused, or
/// the answer is malformed.
std::optional<BootstrapAccount> bootstrapAccount(const IpmiResponse& response);

/// Get Manager Certificate Fingerprint (DSP0270), of the first certificate.
IpmiRequest fingerprintRequest();

/// The SHA-256 digest of the controller's certificate in the answer to it, 32
/// bytes; nullopt if the controller refused, the answer is malformed or the
/// algorithm another one.
std::optional<std::string> certificateDigest(const IpmiResponse& response);

}  // namespace ipmi
