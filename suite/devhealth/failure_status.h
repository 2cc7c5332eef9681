#pragma once

#include "suite/base/failure.h"

namespace devhealth {

// What the calls of `DevHealth` answer.
constexpr int kStatusSuccess = 0;
constexpr int kStatusNoConnection = -1;  ///< The target cannot be reached.
constexpr int kStatusRefused = -2;       ///< The target turns us away.
constexpr int kStatusUnreadable = -3;    ///< It answers, but not with data.
constexpr int kStatusNotSupported = -4;  ///< It is no target for this.
constexpr int kStatusInternal = -5;      ///< A failure of either side's own.

/// When in a call something failed.
enum class Moment {
  kConnecting,  ///< Before the service root was read and the login done.
  kReading
};

/// The status that a failure stands for. A target that does not answer in time
/// is out of reach while connecting, and unreadable after that.
int statusOf(base::FailureKind kind, Moment moment);

}  // namespace devhealth
