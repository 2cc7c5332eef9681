#pragma once

#include <cstdint>

namespace bmc {

/// What happens to a connection at one point of its life.
enum class Admission {
  kServe,  ///< It goes on.
  kStall,  ///< Nothing more happens, until the client leaves.
  kClose,  ///< It is closed.
  kReset,  ///< It is torn down with a TCP reset.
  kDrip    ///< It gets the bytes of a TLS record, one a second, without end.
};

/// What happens to a connection before its first request.
struct ConnectionPlan {
  Admission onAccept = Admission::kServe;
  Admission afterHandshake = Admission::kServe;
  bool plainText = false;  ///< Speaks plain HTTP, also on the HTTPS port.
};

/// Decides what happens to connections.
class ConnectionPolicy {
 public:
  virtual ~ConnectionPolicy() = default;

  /// The plan for a connection; `number` counts them from 1.
  virtual ConnectionPlan plan(std::uint64_t number) = 0;
};

/// Serves every connection.
class ServeAll : public ConnectionPolicy {
 public:
  ConnectionPlan plan(std::uint64_t) override { return {}; }
};

}  // namespace bmc
