#pragma once

#include "suite/base/failure.h"

namespace devhealth {

/// What the calls of `DevHealth` return beside `HealthStatus`: an internal
/// failure, of the controller or of ours.
constexpr int kStatusInternal = -5;

/// When something failed.
enum class Phase {
  kConnecting,  ///< Before the service root was read and the login done.
  kReading
};

/// The status of a failure. A target that does not answer in time is out of
/// reach while connecting, and unreadable after that.
int statusOf(base::FailureKind kind, Phase phase);

}  // namespace devhealth
