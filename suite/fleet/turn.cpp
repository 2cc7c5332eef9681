#include "suite/fleet/turn.h"

namespace fleet {

bool Turn::take() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return closed_ || !taken_; });
  taken_ = taken_ || !closed_;
  return !closed_;
}

void Turn::give() {
  const std::lock_guard lock(mutex_);
  taken_ = false;
  changed_.notify_one();
}

void Turn::close() {
  const std::lock_guard lock(mutex_);
  closed_ = true;
  changed_.notify_all();
}

}  // namespace fleet
