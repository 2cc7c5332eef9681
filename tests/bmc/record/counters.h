#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace bmc {

/// What the controller has seen since it started.
struct Counters {
  std::map<std::string, std::uint64_t> requestsByMethod;
  std::map<std::string, std::uint64_t> answersByStatus;
  std::uint64_t requests = 0;         ///< All of them.
  std::uint64_t openRequests = 0;     ///< Arrived, not yet answered.
  std::uint64_t maxOpenRequests = 0;  ///< Most of them at one time.
  std::uint64_t connections = 0;      ///< Accepted on both service ports.
  std::uint64_t openConnections = 0;
  std::uint64_t maxOpenConnections = 0;
  std::uint64_t tlsHandshakes = 0;  ///< Complete ones of both kinds.
  std::uint64_t tlsFullHandshakes = 0;
  std::uint64_t tlsResumptions = 0;
  std::uint64_t tlsFailures = 0;
  std::uint64_t bytesSent = 0;  ///< Heads and bodies, before encryption.
  std::uint64_t sessionsCreated = 0;
  std::uint64_t sessionsDeleted = 0;  ///< By their owner.
  std::uint64_t sessionsOpen = 0;
  std::uint64_t sessionsExpired = 0;  ///< Ended by the controller.
  std::uint64_t sessionsRefused = 0;  ///< The table was full.
  std::uint64_t loginsRefused = 0;    ///< Wrong user or password.
  std::uint64_t authenticatedByToken = 0;
  std::uint64_t authenticatedByBasic = 0;
  std::uint64_t authenticationsRefused = 0;  ///< Of requests, not of logins.
  std::uint64_t datagrams = 0;               ///< On the IPMI port.
};

/// The counters as one JSON object, names as above.
std::string toJson(const Counters& counters);

/// The reverse. Whatever is missing is 0.
Counters countersFromJson(const std::string& text);

}  // namespace bmc
