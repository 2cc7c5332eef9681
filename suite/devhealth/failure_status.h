#pragma once

#include "suite/base/failure.h"

namespace devhealth {

/// What the calls of `DevHealth` answer beside `HealthStatus`: a failure of
/// either side's own.
constexpr int kStatusInternal = -5;

/// When in a call something failed.
enum class Phase {
  kConnecting,  ///< Before the service root was read and the login done.
  kReading
};

/// The status that a failure stands for. A target that does not answer in time
/// is out of reach while connecting, and unreadable after that.
int statusOf(base::FailureKind kind, Phase phase);

}  // namespace devhealth
