#pragma once

#include <cstdint>

namespace base {

/// Observes the reading of a service. A service calls it from its one thread;
/// it must not throw.
class Progress {
 public:
  virtual ~Progress() = default;

  /// Called with each answer, and about every quarter of a second while the
  /// service waits for one, so that a shown time is kept up to date.
  /// `resourcesRead` counts what this service has read since the run began.
  virtual void tick(std::uint64_t resourcesRead) = 0;

  /// The reading has ended, successfully or not. Must remove what was drawn,
  /// because a report may follow.
  virtual void done() = 0;
};

}  // namespace base
