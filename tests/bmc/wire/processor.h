#pragma once

#include <chrono>

namespace bmc {

/// What the controller's work takes of its one processor.
struct Effort {
  std::chrono::milliseconds fullHandshake{0};
  std::chrono::milliseconds resumedHandshake{0};
  std::chrono::milliseconds request{0};
};

/// The one processor of a simulated controller: it does one piece of work
/// after another, in the order in which they arrive. Nothing is computed; it
/// only tells when a piece would be done.
class Processor {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  explicit Processor(Effort effort) : effort_(effort) {}

  /// When a handshake or a request that arrives at `now` is done. Arrivals
  /// are told in the order of their times.
  TimePoint doHandshake(TimePoint now, bool resumed);
  TimePoint doRequest(TimePoint now);

 private:
  TimePoint work(TimePoint now, std::chrono::milliseconds time);

  Effort effort_;
  TimePoint freeAt_;  ///< When all that has arrived so far is done.
};

}  // namespace bmc
