#pragma once

#include <cstdint>

namespace base {

/// Told how a reading of a service goes on. A service calls it from its one
/// thread; it must not throw.
class Progress {
 public:
  virtual ~Progress() = default;

  /// So many resources have been read by this service since the run began.
  /// Called with each answer, and about every quarter of a second while the
  /// service waits for one, so that an elapsed time moves on.
  virtual void tick(std::uint64_t resourcesRead) = 0;

  /// The reading is over, for better or worse: whatever was drawn is to be
  /// gone when this returns, since a report may follow.
  virtual void done() = 0;
};

/// Makes `progress` the process's observer; null: none. Not owned: it must be
/// taken away again before it dies.
void setProgress(Progress* progress);

/// The process's observer; null: none.
Progress* progress();

}  // namespace base
