#include "suite/platform/last_resort.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <set>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

// Read by a handler of a signal.
std::atomic<std::intptr_t> wordsFile{-1};
static_assert(std::atomic<std::intptr_t>::is_always_lock_free);

// What is watched at present, by its ends. Never destroyed: a thread may
// outlive the end of main.
struct Watched {
  std::mutex mutex;
  std::multiset<Clock::time_point> ends;
};

Watched& watched() {
  static auto& all = *new Watched;
  return all;
}

std::optional<Clock::duration> timeLeft(
    const std::multiset<Clock::time_point>& ends) {
  if (ends.empty()) {
    return std::nullopt;
  }
  // No run takes a day: a later end means none.
  constexpr std::chrono::hours kMost{24};
  const Clock::time_point now = Clock::now();
  const Clock::time_point end = std::min(*ends.rbegin(), now + kMost);
  return end - now + kLastResort;
}

}  // namespace

void setLastWordsFile(std::intptr_t file) noexcept { wordsFile.store(file); }

std::intptr_t lastWordsFile() noexcept { return wordsFile.load(); }

LastResort::LastResort(Clock::time_point until) : until_(until) {
  Watched& all = watched();
  const std::lock_guard<std::mutex> lock(all.mutex);
  all.ends.insert(until_);
  setTimer(timeLeft(all.ends));
}

LastResort::~LastResort() {
  Watched& all = watched();
  const std::lock_guard<std::mutex> lock(all.mutex);
  all.ends.erase(all.ends.find(until_));
  setTimer(timeLeft(all.ends));
}

}  // namespace platform
