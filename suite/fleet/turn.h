#pragma once

#include <condition_variable>
#include <mutex>

namespace fleet {

/// What one of several threads has at a time. It may be given back by another
/// thread than the one that took it.
class Turn {
 public:
  /// Waits until nobody has the turn, and takes it. Returns false, without it,
  /// once it is closed.
  bool take();

  /// Gives the turn to whoever waits.
  void give();

  /// Ends all waiting, now and later.
  void close();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool taken_ = false;
  bool closed_ = false;
};

}  // namespace fleet
