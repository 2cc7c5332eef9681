#include "suite/platform/last_resort.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

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
  for (const int file : {STDERR_FILENO, static_cast<int>(lastWordsFile())}) {
    static_cast<void>(write(file, kText, sizeof(kText) - 1) < 0);
  }
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

}  // namespace

// After an interrupt every new piece of work, such as a logout, has the whole
// time again.
void LastResort::setTimer(std::optional<Clock::duration> left) {
  watching.store(left.has_value());
  if (!left) {
    alarm(0);
    handleAlarm(false);
    return;
  }
  if (!handleAlarm(true)) {
    return;
  }
  if (interruptCame.load()) {
    left = std::min<Clock::duration>(*left, kLastResort);
  }
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(*left).count();
  alarm(static_cast<unsigned int>(std::max<long>(1, seconds)));
}

void interruptLastResort() noexcept {
  interruptCame.store(true);
  if (watching.load()) {
    alarm(static_cast<unsigned int>(kLastResort.count()));
  }
}

}  // namespace platform
