#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "suite/base/clock.h"

namespace fleet {

/// Threads that do a number of equal jobs side by side.
class Workers {
 public:
  /// Starts jobs 0 to `count` - 1 in that order, `fanout` of them at a time,
  /// with fewer threads where the system gives no more. None is started while
  /// as many are done of which `next` has not told, so that results cannot pile
  /// up. `job` is called in any of the threads; an exception that it lets
  /// escape ends all work, and is thrown by `next`.
  Workers(std::size_t count, int fanout, std::function<void(std::size_t)> job);

  /// Starts no more jobs, and waits for those that are under way.
  ~Workers();

  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  /// The next job that is done, in the order of completion. Waits for it until
  /// `until`; nullopt if none was done by then, or all are.
  std::optional<std::size_t> next(base::Clock::time_point until);

  /// Whether `next` has told of all jobs that were or will be done.
  bool finished() const;

  /// Starts no more jobs.
  void stop();

 private:
  void work();

  const std::size_t count_;
  const std::size_t fanout_;
  const std::function<void(std::size_t)> job_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t begun_ = 0;
  std::size_t told_ = 0;
  bool stopped_ = false;
  std::deque<std::size_t> done_;  ///< Not told yet.
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;
};

}  // namespace fleet
