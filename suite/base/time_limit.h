#pragma once

#include <exception>

#include "suite/base/clock.h"

namespace base {

/// Thrown by `heedTime`. Caught where a reading or a mapping ends, in the room
/// that set the limit.
class OutOfTime : public std::exception {
 public:
  const char* what() const noexcept override { return "time is up"; }
};

/// The time that the work of this thread has, while this lives: work on what
/// came from outside calls `heedTime` in every loop. The innermost limit holds.
class TimeLimit {
 public:
  explicit TimeLimit(Clock::time_point until);
  ~TimeLimit();

  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

 private:
  friend void heedTime();

  Clock::time_point until_;
  TimeLimit* outer_;
};

/// Throws OutOfTime when the limit in force has passed, or when the user has
/// interrupted the run; does nothing without a limit. Cheap enough for every
/// step: it looks at the clock once in 256 calls.
void heedTime();

/// The calls of `heedTime` in this thread so far: what a piece of work costs,
/// told without a clock.
unsigned long long stepsSoFar();

}  // namespace base
