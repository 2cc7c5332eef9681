#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/base/byte_view.h"

namespace ipmi {

// The messages of the Intelligent Platform Management Interface (IPMI) that a
// run exchanges with the machine's own controller. Pure functions: whoever has
// a way to the controller sends them.

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

/// Get Bootstrap Account Credentials (DSP0270). Asks the controller to keep
/// bootstrapping enabled, which would else be off until the next reset.
IpmiRequest bootstrapRequest();

/// The account in an answer to `bootstrapRequest`. Returns nullopt if the
/// controller refused or the answer is malformed.
std::optional<BootstrapAccount> bootstrapAccount(const IpmiResponse& response);

/// Get Manager Certificate Fingerprint (DSP0270) for the first certificate.
IpmiRequest fingerprintRequest();

/// The SHA-256 digest (32 bytes) of the controller's certificate in an answer
/// to `fingerprintRequest`. Returns nullopt if the controller refused, the
/// answer is malformed or the digest is of another algorithm.
std::optional<std::string> certificateDigest(const IpmiResponse& response);

}  // namespace ipmi
