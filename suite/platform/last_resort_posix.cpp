#include "suite/platform/last_resort.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <mutex>
#include <set>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

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

// Touched by the handlers, which may do little: lock-free values only.
std::atomic<bool> watching{false};
std::atomic<bool> interruptCame{false};
static_assert(std::atomic<bool>::is_always_lock_free);

void onAlarm(int /*signal*/) {
  if (!watching.load()) {
    return;
  }
  constexpr char kText[] =
      "brivel: the run did not end in time and is ended here; a session that "
      "it opened stays open until it times out on the controller\n";
  static_cast<void>(write(STDERR_FILENO, kText, sizeof(kText) - 1) < 0);
  _exit(kLastResortStatus);
}

// Gives SIGALRM to the last resort, or back to what it does by default.
bool handleAlarm(bool watches) {
  struct sigaction action = {};
  action.sa_handler = watches ? onAlarm : SIG_DFL;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  return sigaction(SIGALRM, &action, nullptr) == 0;
}

// With the mutex held. After an interrupt every new piece of work, such as a
// logout, has the whole time again.
void arm(const std::multiset<Clock::time_point>& ends) {
  watching.store(!ends.empty());
  if (ends.empty()) {
    alarm(0);
    handleAlarm(false);
    return;
  }
  if (!handleAlarm(true)) {
    return;
  }
  // No run takes a day: a later end means none.
  constexpr std::chrono::hours kMost{24};
  const Clock::time_point now = Clock::now();
  const Clock::time_point end = std::min(*ends.rbegin(), now + kMost);
  Clock::duration left = end - now + kLastResort;
  if (interruptCame.load()) {
    left = std::min<Clock::duration>(left, kLastResort);
  }
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(left).count();
  alarm(static_cast<unsigned int>(std::max<long>(1, seconds)));
}

}  // namespace

LastResort::LastResort(Clock::time_point until) : until_(until) {
  Watched& all = watched();
  const std::lock_guard<std::mutex> lock(all.mutex);
  all.ends.insert(until_);
  arm(all.ends);
}

LastResort::~LastResort() {
  Watched& all = watched();
  const std::lock_guard<std::mutex> lock(all.mutex);
  all.ends.erase(all.ends.find(until_));
  arm(all.ends);
}

void interruptLastResort() noexcept {
  interruptCame.store(true);
  if (watching.load()) {
    alarm(static_cast<unsigned int>(kLastResort.count()));
  }
}

}  // namespace platform
