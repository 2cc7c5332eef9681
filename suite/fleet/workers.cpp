#include "suite/fleet/workers.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace fleet {

Workers::Workers(std::size_t count, int fanout,
                 std::function<void(std::size_t)> job)
    : count_(count),
      fanout_(std::min(count, static_cast<std::size_t>(std::max(fanout, 1)))),
      job_(std::move(job)) {
  threads_.reserve(fanout_);
  try {
    while (threads_.size() < fanout_) {
      threads_.emplace_back([this] { work(); });
    }
  } catch (const std::system_error&) {
    if (threads_.empty()) {
      throw;
    }
  }
}

Workers::~Workers() {
  stop();
  for (std::thread& thread : threads_) {
    thread.join();
  }
}

std::optional<std::size_t> Workers::next(base::Clock::time_point until) {
  std::unique_lock lock(mutex_);
  changed_.wait_until(lock, until, [this] {
    return !done_.empty() || failure_ || told_ == (stopped_ ? begun_ : count_);
  });
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  if (done_.empty()) {
    return std::nullopt;
  }
  const std::size_t index = done_.front();
  done_.pop_front();
  ++told_;
  changed_.notify_all();
  return index;
}

bool Workers::finished() const {
  const std::lock_guard lock(mutex_);
  return told_ == (stopped_ ? begun_ : count_);
}

void Workers::stop() {
  const std::lock_guard lock(mutex_);
  stopped_ = true;
  changed_.notify_all();
}

void Workers::work() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] {
      return stopped_ || begun_ == count_ || done_.size() < fanout_;
    });
    if (stopped_ || begun_ == count_) {
      return;
    }
    const std::size_t index = begun_++;
    lock.unlock();
    std::exception_ptr failure;
    try {
      job_(index);
    } catch (...) {
      failure = std::current_exception();
    }
    lock.lock();
    done_.push_back(index);
    if (failure) {
      failure_ = failure;
      stopped_ = true;
    }
    changed_.notify_all();
  }
}

}  // namespace fleet
