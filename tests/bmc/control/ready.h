#pragma once

#include <cstdint>
#include <string>

namespace bmc {

/// What a test needs to know of a running controller.
struct Ready {
  std::string address;
  std::uint16_t httpPort = 0;
  std::uint16_t httpsPort = 0;
  std::uint16_t controlPort = 0;
  std::uint16_t ipmiPort = 0;  ///< 0: none.
  std::string certificate;     ///< Path of the PEM file that clients may trust.
  std::string pin;             ///< "sha256//..." of the certificate's key.
  std::string log;             ///< Path of the log.
  std::string user;
};

/// Puts the facts into FOLDER/ready.json, for programs, and into
/// FOLDER/ready.env, as assignments that a shell can read. Each file appears
/// whole or not at all. False when they cannot be written.
bool writeReady(const Ready& ready, const std::string& folder);

/// Reads FOLDER/ready.json. False when it is not there.
bool readReady(const std::string& folder, Ready& ready);

}  // namespace bmc
