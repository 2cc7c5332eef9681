#pragma once

#include <cstdint>
#include <string>

namespace Tarvex::TarvexConnection {

/// The settings of one target connection: a plain value that the application
/// creates, copies and hands on. It holds no secret; the password stays with
/// the connection library and is found through `service`.
class ConnectionInfo {
 public:
  std::string address;          ///< Host name, address, or "file:DIR".
  std::int16_t port = 0;        ///< Port as 16 bits; 0: the protocol's own.
  std::string user;             ///< User name; empty: none configured.
  std::string credential;       ///< Where the password came from, for the log.
  std::uint16_t nodeIndex = 0;  ///< 0-based node of a multi-node system.
  std::int16_t protocol = 3;    ///< Controller protocol: 3 Redfish.
  std::int32_t firstNode = 0;   ///< Number of its service's first node.
  std::int64_t service = 0;     ///< Handle of the run's service; 0: the first.
};

}  // namespace Tarvex::TarvexConnection
