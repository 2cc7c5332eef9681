#pragma once

#include <optional>

#include "suite/base/clock.h"
#include "suite/base/failure.h"

namespace redfish {

/// Decides whether a password is sent to a service. One object stands for one
/// user and password, whichever services are asked; services in several
/// threads may share it.
class LoginGate {
 public:
  virtual ~LoginGate() = default;

  /// Whether some service has accepted the password, so that no others have to
  /// ask here.
  virtual bool proven() const = 0;

  /// Waits until the password may be sent, until `until` at the latest. Returns
  /// the failure if it may not. Otherwise `leave` has to follow.
  virtual std::optional<base::Failure> enter(base::Clock::time_point until) = 0;

  /// Tells how the login went; null: well.
  virtual void leave(const base::Failure* failure) = 0;
};

}  // namespace redfish
